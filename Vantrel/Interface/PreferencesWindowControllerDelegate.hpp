#pragma once

#include <string>

#include "Vantrel/Interface/KeyboardShortcut.hpp"
#include "Vantrel/Interface/SettingEnumerations.hpp"

namespace vantrel {

/// What the settings window can ask of the application. The window holds its delegate weakly.
class PreferencesWindowControllerDelegate {
  public:
    virtual ~PreferencesWindowControllerDelegate() = default;

    virtual void preferencesDidRecordShortcut(const KeyboardShortcut& shortcut) = 0;
    virtual void preferencesDidResetShortcut() = 0;
    virtual void preferencesDidChangeMode(VantrelMode mode) = 0;
    virtual void preferencesDidChangeAnimation(AnimationStyle style) = 0;
    virtual void preferencesDidChangeSound(bool enabled) = 0;
    virtual void preferencesDidClearSavedPoints() = 0;

    /// There is no window: one line that says why, and the same in two or three words.
    virtual void preferencesWindowFailed(const std::string& problem, const std::string& flashText) = 0;
};

}  // namespace vantrel
