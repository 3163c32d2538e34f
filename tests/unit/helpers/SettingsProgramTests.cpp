#include "Vantrel/Desktop/SettingsWindow/SettingsProgram.hpp"

#include <gtest/gtest.h>

namespace vantrel::desktop {
namespace {

TEST(SettingsProgram, make_programThere_givesAWindow) {
    KeyboardCapture keyboard;
    SettingsProgram settings("offscreen", keyboard, "/bin/true");
    const auto made = settings.makePreferencesWindowView();
    EXPECT_TRUE(made.view);
    EXPECT_EQ(made.problem, "");
}

TEST(SettingsProgram, make_programMissing_saysWhatToInstall) {
    KeyboardCapture keyboard;
    SettingsProgram settings("offscreen", keyboard, "/nonexistent/vantrel-settings");
    const auto made = settings.makePreferencesWindowView();
    EXPECT_FALSE(made.view);
    EXPECT_EQ(made.flashText, "Install vantrel-settings");
    EXPECT_EQ(
        made.problem,
        "install the package vantrel-settings to open the settings (/nonexistent/vantrel-settings: No such file or "
        "directory)");
}

}  // namespace
}  // namespace vantrel::desktop
