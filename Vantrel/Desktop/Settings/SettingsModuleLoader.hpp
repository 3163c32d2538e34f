#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "Vantrel/Interface/PreferencesWindowView.hpp"

namespace vantrel::desktop {

/// Makes settings windows with a module that it loads when the first one is asked for. The module stays loaded until
/// the process ends; where it is missing, the next attempt looks for it again.
class SettingsModuleLoader final : public PreferencesWindowViewFactory {
  public:
    /// `windowingSystem` is the toolkit's name for the windowing system that the agent runs on ("xcb").
    explicit SettingsModuleLoader(std::string windowingSystem, std::filesystem::path moduleFile = installedModule());

    /// The windows are gone by now.
    ~SettingsModuleLoader() override;
    SettingsModuleLoader(const SettingsModuleLoader&) = delete;
    SettingsModuleLoader& operator=(const SettingsModuleLoader&) = delete;

    /// Where the module is installed, or built, seen from the running program.
    static std::filesystem::path installedModule();

    PreferencesWindowViewResult makePreferencesWindowView() override;

  private:
    /// Loads the module into `windows_`; when that fails, what to tell the person.
    PreferencesWindowViewResult loadModule();

    std::string windowingSystem_;
    std::filesystem::path moduleFile_;
    std::unique_ptr<PreferencesWindowViewFactory> windows_;
};

}  // namespace vantrel::desktop
