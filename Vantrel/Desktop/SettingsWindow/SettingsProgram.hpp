#pragma once

#include <filesystem>
#include <string>

#include "Vantrel/Desktop/Helpers/HelperProgram.hpp"
#include "Vantrel/Interface/PreferencesWindowView.hpp"

namespace vantrel::desktop {

/// Makes settings windows that a program of their own draws. It is a package of its own and may be missing.
class SettingsProgram final : public PreferencesWindowViewFactory {
  public:
    /// `windowingSystem` is the toolkit's name for the windowing system that the agent runs on ("xcb").
    explicit SettingsProgram(std::string windowingSystem,
                             std::filesystem::path program = helperProgram("vantrel-settings"));

    PreferencesWindowViewResult makePreferencesWindowView() override;

  private:
    std::string windowingSystem_;
    std::filesystem::path program_;
};

}  // namespace vantrel::desktop
