// The agent's settings window on desktops that are set to dark, by what such desktops themselves run.
#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <memory>

#include "tests/desk/settings/SettingsPortal.hpp"
#include "tests/desk/settings/WindowManagerProbe.hpp"
#include "tests/desk/status/PanelItem.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {
namespace {

class DarkDesktop : public testing::Test {
  protected:
    DarkDesktop() : panel(desk.bus().address()) { desk.environment().set("GSETTINGS_BACKEND", "keyfile"); }

    void openSettings() {
        agent = desk.startAgent();
        ASSERT_TRUE(panel.waitForRegistrations(1));
        item = std::make_unique<PanelItem>(panel.bus(), panel.items().back());
        ASSERT_TRUE(waitOnBus([this] { return item->rows().size() == 16; }));
        item->click(11);
        ASSERT_TRUE(
            waitOnBus([this] { return windowManager.titleOf(windowManager.activeWindow()) == "Vantrel Settings"; }));
        window = windowManager.activeWindow();
    }

    /// The margin around the window's content. It is black before the window is drawn, so that is not enough.
    int lightness() { return windowManager.lightnessAt(window, 8, 8); }
    bool becomesDark() {
        return waitOnBus([this] { return lightness() > 10 && lightness() < 100; });
    }
    bool becomesLight() {
        return waitOnBus([this] { return lightness() > 200; });
    }

    void writeFile(const std::string& name, const std::string& text) {
        const auto file = desk.home().path() / "config" / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }

    /// xsettingsd, which is the settings manager of desktops that people put together by themselves.
    void startSettingsManager(const std::string& theme) {
        writeTheme(theme);
        ChildProcessOptions options;
        options.arguments = {"xsettingsd", "-c", desk.home().path() / "config/xsettingsd"};
        options.environment = desk.environment();
        settingsManager = std::make_unique<ChildProcess>(options);
        ASSERT_TRUE(waitUntil([this] { return windowManager.hasSettingsManager(); }));
    }

    void changeTheme(const std::string& theme) {
        writeTheme(theme);
        settingsManager->sendSignal(SIGHUP);
    }

    void writeTheme(const std::string& theme) { writeFile("xsettingsd", "Net/ThemeName \"" + theme + "\"\n"); }

    Desk desk{{.hasSessionBus = true, .hasWindowManager = true}};
    TestPanel panel;
    WindowManagerProbe windowManager{desk.connection()};
    std::unique_ptr<ChildProcess> settingsManager;
    std::unique_ptr<AgentProcess> agent;
    std::unique_ptr<PanelItem> item;
    xcb_window_t window = XCB_NONE;
};

TEST_F(DarkDesktop, nothingSet_windowIsLight) {
    openSettings();
    EXPECT_TRUE(becomesLight()) << lightness();
}

TEST_F(DarkDesktop, settingsFile_prefersDark_windowIsDark) {
    writeFile("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Adwaita\ngtk-application-prefer-dark-theme=1\n");
    openSettings();
    EXPECT_TRUE(becomesDark()) << lightness();
    EXPECT_EQ(agent->standardError(), "");
}

TEST_F(DarkDesktop, settingsFile_namesADarkTheme_windowIsDark) {
    writeFile("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name = Arc-Dark\n");
    openSettings();
    EXPECT_TRUE(becomesDark()) << lightness();
}

TEST_F(DarkDesktop, settingsManager_darkTheme_windowIsDarkAndFollows) {
    startSettingsManager("Adwaita-dark");
    openSettings();
    EXPECT_TRUE(becomesDark()) << lightness();
    changeTheme("Adwaita");
    EXPECT_TRUE(becomesLight()) << lightness();
    changeTheme("Adwaita-dark");
    EXPECT_TRUE(becomesDark()) << lightness();
}

TEST_F(DarkDesktop, settingsManager_lightTheme_winsOverTheFile) {
    writeFile("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Adwaita-dark\n");
    startSettingsManager("Adwaita");
    openSettings();
    EXPECT_TRUE(becomesLight()) << lightness();
}

TEST_F(DarkDesktop, gnomesSetting_prefersDark_windowIsDark) {
    runProgram({"gsettings", "set", "org.gnome.desktop.interface", "color-scheme", "prefer-dark"}, desk.environment());
    openSettings();
    EXPECT_TRUE(becomesDark()) << lightness();
}

TEST_F(DarkDesktop, portal_dark_windowIsDarkAndFollows) {
    SettingsPortal portal(desk.bus().address(), SettingsPortal::dark);
    openSettings();
    EXPECT_TRUE(becomesDark()) << lightness();
    portal.setColorScheme(SettingsPortal::light);
    EXPECT_TRUE(becomesLight()) << lightness();
    portal.setColorScheme(SettingsPortal::dark);
    EXPECT_TRUE(becomesDark()) << lightness();
}

TEST_F(DarkDesktop, portal_light_winsOverTheRest) {
    const SettingsPortal portal(desk.bus().address(), SettingsPortal::light);
    startSettingsManager("Adwaita-dark");
    openSettings();
    EXPECT_TRUE(waitOnBus([&] { return portal.reads() > 0; }));
    EXPECT_TRUE(becomesLight()) << lightness();
}

TEST_F(DarkDesktop, portal_noPreference_leavesItToTheTheme) {
    const SettingsPortal portal(desk.bus().address(), SettingsPortal::noPreference);
    startSettingsManager("Adwaita-dark");
    openSettings();
    EXPECT_TRUE(becomesDark()) << lightness();
}

TEST_F(DarkDesktop, portal_comesLater_isHeard) {
    openSettings();
    EXPECT_TRUE(becomesLight()) << lightness();
    SettingsPortal portal(desk.bus().address(), SettingsPortal::light);
    portal.setColorScheme(SettingsPortal::dark);
    EXPECT_TRUE(becomesDark()) << lightness();
}

}  // namespace
}  // namespace vantrel::desk
