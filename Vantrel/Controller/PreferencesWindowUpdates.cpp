#include "Vantrel/Controller/AppDelegate.hpp"
#include "Vantrel/Interface/PreferencesWindowController.hpp"

#include <cstdio>

namespace vantrel {

void AppDelegate::refreshPreferencesWindow() {
    assertMainThread("refreshPreferencesWindow");
    if (!preferencesWindowController) {
        return;
    }
    preferencesWindowController->refresh({.primaryShortcut = primaryShortcut,
                                          .primaryShortcutIsRegistered = primaryShortcutIsRegistered,
                                          .primaryShortcutStatusText = primaryShortcutStatusText,
                                          .mode = mode,
                                          .animationStyle = animationStyle,
                                          .soundEnabled = soundEnabled,
                                          .savedPoints = savedPoints});
}

void AppDelegate::preferencesDidRecordShortcut(const KeyboardShortcut& shortcut) {
    assertMainThread("preferencesDidRecordShortcut");
    applyPrimaryShortcut(shortcut);
}

void AppDelegate::preferencesDidResetShortcut() {
    assertMainThread("preferencesDidResetShortcut");
    applyPrimaryShortcut(KeyboardShortcut{2, KeyboardShortcut::hyper});
}

void AppDelegate::preferencesDidChangeMode(VantrelMode newMode) {
    assertMainThread("preferencesDidChangeMode");
    storeMode(newMode);
    rebuildMenu();
    refreshPreferencesWindow();
}

void AppDelegate::preferencesDidChangeAnimation(AnimationStyle style) {
    assertMainThread("preferencesDidChangeAnimation");
    storeAnimationStyle(style);
    rebuildMenu();
    refreshPreferencesWindow();
}

void AppDelegate::preferencesDidChangeSound(bool enabled) {
    assertMainThread("preferencesDidChangeSound");
    storeSoundEnabled(enabled);
    rebuildMenu();
    refreshPreferencesWindow();
}

void AppDelegate::preferencesDidClearSavedPoints() {
    assertMainThread("preferencesDidClearSavedPoints");
    clearSavedPoints();
}

void AppDelegate::preferencesWindowFailed(const std::string& problem, const std::string& flashText) {
    assertMainThread("preferencesWindowFailed");
    std::fprintf(stderr, "vantrel: %s\n", problem.c_str());
    flashStatus(flashText);
}

}  // namespace vantrel
