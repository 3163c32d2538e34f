#include "tests/soak/SoakDesk.hpp"

#include <stdexcept>

#include "tests/desk/status/ScreenWindows.hpp"
#include "tests/desk/support/KeyGrab.hpp"

namespace vantrel::soak {

namespace {

using desk::keys::d;

/// Icons and messages are smaller.
constexpr int leastWindowWidth = 300;

/// Under valgrind, on a loaded machine, everything takes its time.
constexpr desk::Duration patience = std::chrono::seconds(120);

GVariant* openArguments(const std::vector<std::string>& urls) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE_STRING_ARRAY);
    for (const std::string& url : urls) {
        g_variant_builder_add(&list, "s", url.c_str());
    }
    return g_variant_new("(as@a{sv})", &list, g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0));
}

}  // namespace

SoakDesk::SoakDesk() : panel_(std::make_unique<desk::TestPanel>(desk_.bus().address())) {}

void SoakDesk::await(const std::string& what, const std::function<bool()>& condition) {
    const bool holds = desk::waitOnBus([&] { return condition() || !agent_->isRunning(); }, patience);
    if (!agent_->isRunning()) {
        throw std::runtime_error("the agent has ended while this was waited for: " + what);
    }
    if (!holds) {
        throw std::runtime_error("this does not come about: " + what);
    }
}

void SoakDesk::serveBus() {
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
}

void SoakDesk::startAgent() {
    item_.reset();
    settingsWindow_ = XCB_NONE;
    agent_ = desk_.startProgram();
    await("the agent holds its hot keys",
          [&] { return desk::isHeldByAnotherProgram(desk_.connection(), desk::hyper(desk::keys::s)); });
    awaitItem();
}

void SoakDesk::awaitItem() {
    await("the agent's item in the panel", [this] {
        if (panel_->items().empty()) {
            return false;
        }
        // The last may still be that of an agent that was killed in the middle of its start.
        item_ = std::make_unique<desk::PanelItem>(panel_->bus(), panel_->items().back());
        constexpr std::size_t rows = 16;
        return !item_->text("Menu").empty() && item_->rows().size() == rows;
    });
}

void SoakDesk::killAgent() {
    item_.reset();
    agent_->kill();
}

void SoakDesk::endAgent() {
    item_.reset();
    agent_->sendSignal(SIGTERM);
    if (agent_->waitForExit(patience) != desk::ExitStatus{.code = 0, .signal = std::nullopt}) {
        throw std::runtime_error("the agent's end is not the ordinary one");
    }
}

void SoakDesk::restartPanel() {
    item_.reset();
    panel_.reset();
    panel_ = std::make_unique<desk::TestPanel>(desk_.bus().address());
    awaitItem();
}

void SoakDesk::click(MenuRow row) {
    if (!item_->click(static_cast<int>(row))) {
        throw std::runtime_error("the agent takes no click on its menu");
    }
}

void SoakDesk::openURLs(const std::vector<std::string>& urls) {
    const auto answer = panel_->bus().call("org.vantrel.Vantrel", "/org/vantrel/Vantrel", "org.freedesktop.Application",
                                           "Open", openArguments(urls));
    if (!answer) {
        throw std::runtime_error("the agent takes no URLs");
    }
}

void SoakDesk::setKeymap(const std::string& layout, const std::string& option) {
    desk::setKeyboardMap(desk_.server().displayName(), layout, option);
    await("the hot keys on the new keymap",
          [&] { return desk::isHeldByAnotherProgram(desk_.connection(), desk::hyper(d)); });
    // Where Alt + Shift switches layouts, one of the two is no modifier once both are down.
    const bool switchesLayouts = option == "grp:alt_shift_toggle";
    await("the reduced hot keys as the new keymap needs them", [&] {
        return desk::isHeldByAnotherProgram(desk_.connection(), desk::controlOptionCommand(d)) == switchesLayouts;
    });
}

xcb_window_t SoakDesk::findSettingsWindow() {
    for (const desk::ScreenWindow& window : desk::visibleWindows(desk_.connection(), "vantrel")) {
        if (window.width >= leastWindowWidth) {
            return window.identifier;
        }
    }
    return XCB_NONE;
}

void SoakDesk::openSettings() {
    // It would take the keyboard with it from the new one.
    await("the window of an agent that was killed goes", [&] { return findSettingsWindow() == XCB_NONE; });
    click(MenuRow::settings);
    await("the keyboard goes to the settings window", [&] {
        settingsWindow_ = findSettingsWindow();
        const desk::XReply<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(
            desk_.connection().get(), xcb_get_input_focus(desk_.connection().get()), nullptr));
        return focus && settingsWindow_ != XCB_NONE && focus->focus == settingsWindow_;
    });
}

void SoakDesk::closeSettings() {
    windows_.closeWindow(settingsWindow_);
    await("the settings window closes", [&] { return findSettingsWindow() == XCB_NONE; });
    settingsWindow_ = XCB_NONE;
}

StoreReader& SoakDesk::store() {
    if (!store_) {
        store_ = std::make_unique<StoreReader>(desk_.home().storeFile());
    }
    return *store_;
}

}  // namespace vantrel::soak
