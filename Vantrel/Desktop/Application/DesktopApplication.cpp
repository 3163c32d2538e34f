#include "Vantrel/Desktop/Application/DesktopApplication.hpp"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "Vantrel/Desktop/Application/BusFlowControl.hpp"
#include "Vantrel/Platform/MainQueue.hpp"

namespace vantrel::desktop {

DesktopApplication::DesktopApplication(MainQueue& mainQueue, SessionBus::Connected busConnected)
    : mainQueue_(mainQueue),
      busConnected_(std::move(busConnected)),
      signals_([this] { terminate(); }),
      urls_([this](std::string url) { openURL(std::move(url)); }),
      bus_([this](GDBusConnection* bus) { this->busConnected(bus); }) {}

DesktopApplication::~DesktopApplication() = default;

int DesktopApplication::run() {
    mainQueue_.async([this] { launch(); });
    while (!hasEnded_) {
        g_main_context_iteration(nullptr, TRUE);
    }
    if (const auto delegate = delegate_.lock()) {
        delegate->applicationWillTerminate();
    }
    // The panel that chose "Quit" waits for an answer.
    constexpr std::chrono::milliseconds mostForAnswers{100};
    bus_.flush(mostForAnswers);
    return exitStatus_;
}

void DesktopApplication::launch() {
    if (const auto delegate = delegate_.lock()) {
        delegate->applicationDidFinishLaunching();
    }
    urls_.resume();
    bus_.connect();
}

void DesktopApplication::busConnected(GDBusConnection* bus) {
    controlBusFlow(bus);
    busConnected_(bus);
    busApplication_ = std::make_unique<BusApplication>(
        bus,
        BusApplication::Events{[this](URLQueue::Reader urls) { urls_.append(std::move(urls)); }, [this] { reopen(); }});
}

void DesktopApplication::openURL(std::string url) {
    if (const auto delegate = delegate_.lock()) {
        delegate->applicationOpen({std::move(url)});
    }
}

void DesktopApplication::reopen() {
    if (const auto delegate = delegate_.lock()) {
        delegate->applicationDidReopen();
    }
}

void DesktopApplication::fail(const std::string& message) {
    std::fprintf(stderr, "vantrel: %s\n", message.c_str());
    exitStatus_ = EXIT_FAILURE;
    terminate();
}

void DesktopApplication::setActivationPolicy(ActivationPolicy /*policy*/) {}

void DesktopApplication::activate(bool /*ignoringOtherApps*/) {}

void DesktopApplication::terminate() {
    hasEnded_ = true;
}

}  // namespace vantrel::desktop
