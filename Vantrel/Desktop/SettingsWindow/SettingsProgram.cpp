#include "Vantrel/Desktop/SettingsWindow/SettingsProgram.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

#include "Vantrel/Desktop/SettingsWindow/RemoteSettingsWindow.hpp"

namespace vantrel::desktop {

SettingsProgram::SettingsProgram(std::string windowingSystem, KeyboardCapture& keyboard, std::filesystem::path program)
    : windowingSystem_(std::move(windowingSystem)), keyboard_(keyboard), program_(std::move(program)) {}

PreferencesWindowViewResult SettingsProgram::makePreferencesWindowView() {
    if (access(program_.c_str(), X_OK) != 0) {
        return {.view = nullptr,
                .problem = "install the package vantrel-settings to open the settings (" + program_.string() + ": " +
                           std::strerror(errno) + ")",
                .flashText = "Install vantrel-settings"};
    }
    return {.view = std::make_unique<RemoteSettingsWindow>(
                [program = program_, system = windowingSystem_] { return startHelper(program, system); }, keyboard_),
            .problem = {},
            .flashText = {}};
}

}  // namespace vantrel::desktop
