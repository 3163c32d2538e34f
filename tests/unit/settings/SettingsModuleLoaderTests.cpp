#include "Vantrel/Desktop/Settings/SettingsModuleLoader.hpp"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "Vantrel/Desktop/Settings/SettingsModule.hpp"

namespace vantrel::desktop {
namespace {

TEST(SettingsModuleLoader, make_moduleThere_givesWindows) {
    SettingsModuleLoader loader("offscreen", VANTREL_MODULE_FILE);
    for (int count = 0; count < 2; ++count) {
        const auto made = loader.makePreferencesWindowView();
        EXPECT_TRUE(made.view) << made.problem;
        EXPECT_EQ(made.problem, "");
    }
}

TEST(SettingsModuleLoader, make_moduleMissing_saysWhatToInstall) {
    SettingsModuleLoader loader("offscreen", "/nonexistent/vantrel-settings.so");
    const auto made = loader.makePreferencesWindowView();
    EXPECT_FALSE(made.view);
    EXPECT_EQ(made.flashText, "Install vantrel-settings");
    EXPECT_EQ(made.problem.find("install the package vantrel-settings to open the settings (/nonexistent/"), 0U)
        << made.problem;
    EXPECT_EQ(made.problem.find('\n'), std::string::npos);
}

TEST(SettingsModuleLoader, make_moduleDamaged_saysWhatToInstall) {
    SettingsModuleLoader loader("offscreen", VANTREL_DAMAGED_MODULE_FILE);
    const auto made = loader.makePreferencesWindowView();
    EXPECT_FALSE(made.view);
    EXPECT_EQ(made.flashText, "Install vantrel-settings");
}

TEST(SettingsModuleLoader, make_noWindowingSystem_saysWhatIsWrong) {
    SettingsModuleLoader loader("nosuchsystem", VANTREL_MODULE_FILE);
    const auto made = loader.makePreferencesWindowView();
    EXPECT_FALSE(made.view);
    EXPECT_EQ(made.problem.find("the settings cannot be shown: Qt's plugin for nosuchsystem"), 0U) << made.problem;
    EXPECT_EQ(made.flashText, "Settings unavailable");
}

TEST(SettingsModuleLoader, make_moduleOfAnotherVersion_asksForAnotherStart) {
    SettingsModuleLoader loader("offscreen", VANTREL_OTHER_VERSION_MODULE_FILE);
    const auto made = loader.makePreferencesWindowView();
    EXPECT_FALSE(made.view);
    EXPECT_EQ(made.flashText, "Restart Vantrel");
    EXPECT_EQ(made.problem.find("start Vantrel again to open the settings (/"), 0U) << made.problem;
}

TEST(SettingsModule, entryPoint_agentOfAnotherVersion_refuses) {
    void* const module = dlopen(VANTREL_MODULE_FILE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    const auto entryPoint = reinterpret_cast<SettingsModule::EntryPoint>(dlsym(module, "vantrelSettingsModule"));
    ASSERT_NE(entryPoint, nullptr);
    std::string problem;
    EXPECT_EQ(entryPoint("0.0.0", "offscreen", problem), nullptr);
    EXPECT_EQ(problem, "");
}

}  // namespace
}  // namespace vantrel::desktop
