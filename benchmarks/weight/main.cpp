// Weighs the resting agent on each kind of desktop, and what draws on the screen for it.
#include <chrono>
#include <cstdio>
#include <exception>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "tests/desk/status/ItemProcess.hpp"
#include "tests/desk/status/ScreenWindows.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"

namespace vantrel::desk {
namespace {

using std::chrono::seconds;

// The start, the memory that it gives back, and the end of threads that GLib keeps for fifteen seconds.
constexpr seconds settlingTime(25);
constexpr seconds restingTime(30);

/// A line of /proc/PID/smaps_rollup, in MB.
double megabytes(pid_t process, const std::string& name) {
    std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string word; file >> word;) {
        if (word == name + ":") {
            double kibibytes = 0;
            file >> kibibytes;
            return kibibytes / 1024;
        }
    }
    return 0;
}

void printWeight(const char* title, pid_t process) {
    std::printf("%-44s resident %5.2f MB   private dirty %5.2f MB   proportional %5.2f MB", title,
                megabytes(process, "Rss"), megabytes(process, "Private_Dirty"), megabytes(process, "Pss"));
    std::fflush(stdout);
}

void printRest(const char* title, pid_t process) {
    printWeight(title, process);
    const auto before = voluntarySwitches(process);
    std::this_thread::sleep_for(restingTime);
    std::printf("   woken %ld times in 30 s\n", static_cast<long>(voluntarySwitches(process) - before));
}

void serveBus(seconds time) {
    waitOnBus([] { return false; }, time);
}

void weighBesidePanel() {
    Desk desk;
    TestPanel panel(desk.bus().address());
    const auto agent = desk.startAgent();
    serveBus(settlingTime);
    printRest("with a StatusNotifier panel", agent->processId());
    for (int count = 0; count < 20; ++count) {
        desk.keyboard().type(hyper(keys::s));
        desk.keyboard().type(hyper(keys::d));
        serveBus(seconds(0));
    }
    waitOnBus([&] { return !overlayOf(agent->processId()); });
    serveBus(settlingTime);
    printRest("the same after 20 jumps, saves and messages", agent->processId());
}

void weighWithoutPanel() {
    Desk desk;
    const auto agent = desk.startAgent();
    std::this_thread::sleep_for(settlingTime);
    printRest("without any panel", agent->processId());
}

void weighInTray() {
    Desk desk({.hasSessionBus = true, .hasWindowManager = true});
    const std::filesystem::path configuration = desk.home().path() / "tint2rc";
    std::ofstream(configuration) << "panel_items = S\npanel_size = 100% 30\n";
    ChildProcessOptions options;
    options.arguments = {"tint2", "-c", configuration.native()};
    options.environment = desk.environment();
    ChildProcess tint2(options);
    const auto agent = desk.startAgent();
    std::this_thread::sleep_for(settlingTime);
    const bool isDocked = !visibleWindows(desk.connection(), "vantrel").empty();
    printRest(isDocked ? "in tint2's tray" : "NOT in tint2's tray", agent->processId());
}

/// The time from the press of Hyper + S to the text on the screen, in milliseconds.
double timeToText(Desk& desk) {
    const auto start = std::chrono::steady_clock::now();
    desk.keyboard().type(hyper(keys::s));
    waitUntil([&] { return !visibleWindows(desk.connection(), "vantrel-overlay").empty(); });
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void weighText() {
    Desk desk;
    const auto agent = desk.startAgent();
    const double first = timeToText(desk);
    const auto overlay = overlayOf(agent->processId());
    if (overlay) {
        printWeight("vantrel-overlay, while a message stands", *overlay);
        std::printf("\n");
    }
    waitUntil([&] { return visibleWindows(desk.connection(), "vantrel-overlay").empty(); });
    const double second = timeToText(desk);
    std::printf("%-44s %.0f ms; the next, while it lingers, %.0f ms\n", "from the key to the message on the screen",
                first, second);
    waitUntil([&] { return !overlayOf(agent->processId()); });
    std::printf("%-44s gone\n", "vantrel-overlay, five seconds later");
}

}  // namespace
}  // namespace vantrel::desk

int main() {
    try {
        vantrel::desk::weighBesidePanel();
        vantrel::desk::weighWithoutPanel();
        vantrel::desk::weighInTray();
        vantrel::desk::weighText();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vantrel-bench-weight: %s\n", error.what());
        return 1;
    }
    return 0;
}
