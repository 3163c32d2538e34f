// The old system tray: real trays, because each treats its icons in its own way.
#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

#include "tests/desk/status/StatusDesk.hpp"

namespace vantrel::desk {
namespace {

class Tray : public StatusDesk {
  protected:
    /// tint2 waits for a window manager.
    Tray() : StatusDesk({.hasSessionBus = true, .hasWindowManager = true}) { desk.pointer().moveTo({700, 500}); }

    std::unique_ptr<ChildProcess> start(const std::vector<std::string>& arguments) {
        ChildProcessOptions options;
        options.arguments = arguments;
        options.environment = desk.environment();
        return std::make_unique<ChildProcess>(options);
    }
    /// Its own configuration brings a launcher, which reads every icon on the machine first.
    std::unique_ptr<ChildProcess> startTint2() {
        const std::filesystem::path file = desk.home().path() / "tint2rc";
        std::ofstream(file)
            << "panel_items = S\npanel_size = 100% 30\nsystray_padding = 4 4 4\nbackground_color = #444444 100\n";
        return start({"tint2", "-c", file.native()});
    }
    static constexpr auto noTrayer = "needs the package trayer, which this release of Debian does not have";
    std::unique_ptr<ChildProcess> startTrayer() { return start({"trayer", "--edge", "top", "--height", "26"}); }

    std::vector<ScreenWindow> icons() { return visibleWindows(desk.connection(), iconClass); }

    /// Waits until the item's icon can be seen in the tray.
    std::optional<ScreenWindow> waitForIcon(ItemProcess& process) {
        const bool isDocked = waitOnBus([&] { return process.isVisible() && icons().size() == 1; });
        return isDocked ? std::optional(icons().front()) : std::nullopt;
    }

    void clickOn(const ScreenWindow& window) {
        desk.pointer().moveTo(desk.layout().toMain({window.x + window.height / 2, window.y + window.height / 2}));
        clickButton(desk.connection(), 1);
    }

    /// Opens the menu by a click on the icon and chooses the first command.
    void expectMenuActs(ItemProcess& process) {
        constexpr std::uint32_t down = 0xFF54;
        constexpr std::uint32_t enter = 0xFF0D;
        clickOn(icons().at(0));
        ASSERT_TRUE(waitForOverlayWindows(1));
        ASSERT_TRUE(waitUntil([&] { return isKeyboardGrabbed(desk.connection()); }));
        typeKeysym(desk.connection(), down);
        typeKeysym(desk.connection(), enter);
        EXPECT_TRUE(process.waitForLine("chosen Teleport Now"));
        EXPECT_TRUE(waitForOverlayWindows(0));
    }
};

TEST_F(Tray, tint2_item_docksAndItsMenuActs) {
    const auto tint2 = startTint2();
    ItemProcess process(desk.environment());
    const auto icon = waitForIcon(process);
    ASSERT_TRUE(icon);
    EXPECT_LE(icon->width, 48);
    expectMenuActs(process);
}

TEST_F(Tray, tint2_startsLateAndAgain_getsTheItem) {
    ItemProcess process(desk.environment());
    for (int life = 0; life < 2; ++life) {
        const auto tint2 = startTint2();
        ASSERT_TRUE(waitForIcon(process)) << life;
        tint2->end(life == 0 ? SIGKILL : SIGTERM);
        EXPECT_TRUE(process.waitForVisible(false)) << life;
        EXPECT_TRUE(waitUntil([this] { return icons().empty(); })) << life;
    }
    EXPECT_TRUE(process.isRunning());
}

TEST_F(Tray, tint2_title_isShownOnTheScreen) {
    const auto tint2 = startTint2();
    ItemProcess process(desk.environment());
    ASSERT_TRUE(waitForIcon(process));
    process.say("title Saved");
    EXPECT_TRUE(waitForOverlayWindows(1));
}

TEST_F(Tray, tint2_personKillsTheIcon_messagesComeToTheScreen) {
    const auto tint2 = startTint2();
    ItemProcess process(desk.environment());
    const auto icon = waitForIcon(process);
    ASSERT_TRUE(icon);
    xcb_kill_client(desk.connection().get(), icon->identifier);
    desk.connection().synchronise();
    EXPECT_TRUE(process.waitForVisible(false));
    process.say("title Saved");
    EXPECT_TRUE(waitForOverlayWindows(1));
}

TEST_F(Tray, trayer_title_isShownOnTheScreen) {
    if (!isInPath("trayer")) {
        GTEST_SKIP() << noTrayer;
    }
    const auto trayer = startTrayer();
    ItemProcess process(desk.environment());
    ASSERT_TRUE(waitForIcon(process));
    process.say("title Saved");
    EXPECT_TRUE(waitForOverlayWindows(1));
    process.say("title Vantrel");
    EXPECT_TRUE(waitForOverlayWindows(0));
}

TEST_F(Tray, trayer_restarted_getsTheItemAndItsMenuActs) {
    if (!isInPath("trayer")) {
        GTEST_SKIP() << noTrayer;
    }
    ItemProcess process(desk.environment());
    for (int life = 0; life < 2; ++life) {
        const auto trayer = startTrayer();
        ASSERT_TRUE(waitForIcon(process)) << life;
        expectMenuActs(process);
        trayer->end(SIGKILL);
        EXPECT_TRUE(process.waitForVisible(false)) << life;
    }
}

TEST_F(Tray, tint2_hostComesAndGoes_itemLeavesTheTrayAndReturns) {
    const auto tint2 = startTint2();
    ItemProcess process(desk.environment());
    ASSERT_TRUE(waitForIcon(process));
    {
        TestPanel panel(desk.bus().address());
        ASSERT_TRUE(panel.waitForRegistrations(1));
        EXPECT_TRUE(waitOnBus([&] { return icons().empty(); }));
        EXPECT_TRUE(waitOnBus([&] { return process.isVisible(); }));
    }
    EXPECT_TRUE(waitForIcon(process));
}

}  // namespace
}  // namespace vantrel::desk
