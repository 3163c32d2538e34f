// The installed program, with a prefix that nobody knows: found by the desktop's own means.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desk/status/ScreenWindows.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

/// A desk whose session bus and data directories know the installed files.
class Installed : public testing::Test {
  protected:
    Installed() {
        desk.environment().set("XDG_DATA_DIRS", VANTREL_PREFIX "/share:/usr/share");
        const auto socket = (desk.home().path() / "session-bus").native();
        desk.environment().set("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + socket);
        ChildProcessOptions options;
        options.arguments = {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=unix:path=" + socket};
        options.environment = desk.environment();
        bus = std::make_unique<ChildProcess>(options);
        if (!waitUntil([&] { return std::filesystem::exists(socket); })) {
            throw std::runtime_error("no session bus");
        }
        desk.pointer().moveTo(onMain);
    }

    std::unique_ptr<ChildProcess> startInstalledProgram() {
        ChildProcessOptions options;
        options.arguments = {VANTREL_PREFIX "/bin/vantrel"};
        options.environment = desk.environment();
        return std::make_unique<ChildProcess>(options);
    }

    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
    std::unique_ptr<ChildProcess> bus;
};

TEST_F(Installed, press_hyperD_carriesThePointer) {
    const auto agent = startInstalledProgram();
    ASSERT_TRUE(desk.waitForHotKey(hyper(keys::s)));
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    EXPECT_EQ(agent->end().code, 0);
}

TEST_F(Installed, openOnTheBus_noAgent_startsItAndIsObeyed) {
    runProgram({"gdbus", "call", "--session", "--dest", "org.vantrel.Vantrel", "--object-path", "/org/vantrel/Vantrel",
                "--method", "org.freedesktop.Application.Open", "['vantrel://next']", "{}"},
               desk.environment());
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    EXPECT_TRUE(desk.waitForHotKey(hyper(keys::s)));
}

TEST_F(Installed, xdgOpen_agentRuns_isObeyed) {
    // What a package manager does after it has installed a desktop file.
    runProgram({"update-desktop-database", VANTREL_PREFIX "/share/applications"}, desk.environment());
    const auto agent = startInstalledProgram();
    ASSERT_TRUE(desk.waitForHotKey(hyper(keys::s)));
    runProgram({"xdg-open", "vantrel://next"}, desk.environment());
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
    EXPECT_TRUE(agent->isRunning());
}

TEST_F(Installed, menu_settings_opensTheWindowOfTheInstalledProgram) {
    constexpr std::uint32_t downKey = 0xFF54;
    constexpr std::uint32_t enterKey = 0xFF0D;
    constexpr int rowsToSettings = 5;
    const auto agent = startInstalledProgram();
    ASSERT_TRUE(desk.waitForHotKey(hyper(keys::s)));
    // A second start opens the menu, drawn by the installed helper program, where no panel shows the item.
    runProgram({VANTREL_PREFIX "/bin/vantrel"}, desk.environment());
    ASSERT_TRUE(waitUntil([&] { return isKeyboardGrabbed(desk.connection()); }));
    for (int row = 0; row < rowsToSettings; ++row) {
        typeKeysym(desk.connection(), downKey);
    }
    typeKeysym(desk.connection(), enterKey);
    EXPECT_TRUE(waitUntil([&] {
        const auto windows = visibleWindows(desk.connection(), "vantrel");
        return std::any_of(windows.begin(), windows.end(), [](const ScreenWindow& window) {
            return !window.isOverrideRedirect && window.width >= 560;
        });
    }));
}

TEST_F(Installed, capsLockHyper_installedScript_pressesTheHotKey) {
    const auto agent = startInstalledProgram();
    ASSERT_TRUE(desk.waitForHotKey(hyper(keys::s)));
    runProgram({VANTREL_PREFIX "/share/vantrel/caps-lock-hyper"}, desk.environment());
    desk.keyboard().type({keys::capsLock, keys::d});
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond));
}

}  // namespace
}  // namespace vantrel::desk
