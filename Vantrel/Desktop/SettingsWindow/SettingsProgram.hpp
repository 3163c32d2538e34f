#pragma once

#include <filesystem>
#include <string>

#include "Vantrel/Desktop/Helpers/HelperProgram.hpp"
#include "Vantrel/Interface/PreferencesWindowView.hpp"
#include "Vantrel/Platform/KeyboardCapture.hpp"

namespace vantrel::desktop {

/// Makes settings windows that a program of their own draws. It is a package of its own and may be missing.
class SettingsProgram final : public PreferencesWindowViewFactory {
  public:
    /// `windowingSystem` is the toolkit's name for the windowing system that the agent runs on ("xcb"); the keyboard is
    /// told of recordings, and outlives this object and the windows.
    SettingsProgram(std::string windowingSystem, KeyboardCapture& keyboard,
                    std::filesystem::path program = helperProgram("vantrel-settings"));

    PreferencesWindowViewResult makePreferencesWindowView() override;

  private:
    std::string windowingSystem_;
    KeyboardCapture& keyboard_;
    std::filesystem::path program_;
};

}  // namespace vantrel::desktop
