#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "Vantrel/Desktop/Helpers/HelperProgram.hpp"
#include "Vantrel/Interface/PreferencesWindowView.hpp"

namespace vantrel::desktop {

/// Makes settings windows that a program of their own draws. It is a package of its own and may be missing.
class SettingsProgram final : public PreferencesWindowViewFactory {
  public:
    /// `windowingSystem` is the toolkit's name for the windowing system that the agent runs on ("xcb");
    /// `recordingChanged` is told whether a recorder has the keyboard, so that no hot key must act.
    SettingsProgram(std::string windowingSystem, std::function<void(bool isRecording)> recordingChanged,
                    std::filesystem::path program = helperProgram("vantrel-settings"));

    PreferencesWindowViewResult makePreferencesWindowView() override;

  private:
    std::string windowingSystem_;
    std::function<void(bool isRecording)> recordingChanged_;
    std::filesystem::path program_;
};

}  // namespace vantrel::desktop
