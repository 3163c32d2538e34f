#include "Vantrel/Controller/AppDelegate.hpp"

#include <array>

namespace vantrel {

namespace {

constexpr std::uint32_t controlOptionCommand =
    KeyboardShortcut::control | KeyboardShortcut::option | KeyboardShortcut::command;

struct FixedHotKey {
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    HotKeyAction action;
};

constexpr std::array<FixedHotKey, 4> fixedHotKeys{{
    {124, controlOptionCommand, HotKeyAction::nextDisplay},
    {123, controlOptionCommand, HotKeyAction::previousDisplay},
    {46, controlOptionCommand, HotKeyAction::savedPoint},
    {1, KeyboardShortcut::hyper, HotKeyAction::saveCurrentPoint},
}};

}  // namespace

std::string AppDelegate::readyStatusText(const KeyboardShortcut& shortcut) {
    // Hyper is pressed as Caps Lock, so that is the key to name.
    if (shortcut.modifiers == KeyboardShortcut::hyper) {
        return "Ready. With Raycast Hyper Key, use Caps Lock + " + KeyboardShortcut::keyLabel(shortcut.keyCode) + ".";
    }
    return "Ready. Use " + shortcut.displayText() + ".";
}

void AppDelegate::installHotKeyHandler() {
    const OSStatus status = platform_.hotKeys.InstallEventHandler(
        platform_.hotKeys.GetEventDispatcherTarget(), hotKeyHandler_,
        EventTypeSpec{kEventClassKeyboard, kEventHotKeyPressed}, this, eventHandlerRef);
    if (status != 0) {
        flashStatus("Hotkeys off");
    }
}

void AppDelegate::registerPrimaryHotKeyAtLaunch() {
    releasePrimaryHotKey();
    const std::string label = primaryShortcut.displayText();
    if (primaryShortcut.isKnownRaycastConflict()) {
        primaryShortcutIsRegistered = false;
        primaryShortcutStatusText = label + " is reserved in Raycast. Choose a different Hyper key.";
        return;
    }
    const HotKeyRegistration registration = registerHotKey(primaryShortcut, HotKeyAction::primary);
    primaryShortcutIsRegistered = registration.succeeded();
    if (registration.succeeded()) {
        primaryHotKeyRef = registration.hotKeyRef;
        primaryShortcutStatusText = readyStatusText(primaryShortcut);
    } else {
        primaryShortcutStatusText =
            label + " is unavailable right now. macOS returned " + std::to_string(registration.status) + ".";
    }
}

void AppDelegate::registerSecondaryHotKeys() {
    for (const FixedHotKey& hotKey : fixedHotKeys) {
        registerSecondaryHotKey(hotKey.keyCode, hotKey.modifiers, hotKey.action);
    }
}

void AppDelegate::registerSecondaryHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyAction action) {
    const HotKeyRegistration registration = registerHotKey(KeyboardShortcut{keyCode, modifiers}, action);
    // A fixed hot key that another program holds is simply absent.
    if (registration.succeeded()) {
        secondaryHotKeyRefs.push_back(registration.hotKeyRef);
    }
}

AppDelegate::HotKeyRegistration AppDelegate::registerHotKey(const KeyboardShortcut& shortcut, HotKeyAction action) {
    HotKeyRegistration registration;
    registration.status = platform_.hotKeys.RegisterEventHotKey(
        shortcut.keyCode, shortcut.modifiers, EventHotKeyID{hotKeySignature_, static_cast<std::uint32_t>(action)},
        platform_.hotKeys.GetEventDispatcherTarget(), 0, registration.hotKeyRef);
    return registration;
}

void AppDelegate::releasePrimaryHotKey() {
    if (primaryHotKeyRef != nullptr) {
        platform_.hotKeys.UnregisterEventHotKey(primaryHotKeyRef);
    }
    primaryHotKeyRef = nullptr;
}

void AppDelegate::applyPrimaryShortcut(const KeyboardShortcut& shortcut) {
    const bool isApplied = tryPrimaryShortcut(shortcut);
    rebuildMenu();
    refreshPreferencesWindow();
    flashStatus(isApplied ? "Shortcut saved" : "Shortcut busy");
}

bool AppDelegate::tryPrimaryShortcut(const KeyboardShortcut& shortcut) {
    const std::string label = shortcut.displayText();
    if (shortcut.isKnownRaycastConflict()) {
        primaryShortcutStatusText = label + " is already reserved in Raycast. Hyper + 1 through Hyper + 5 are avoided.";
        return false;
    }
    releasePrimaryHotKey();
    const HotKeyRegistration registration = registerHotKey(shortcut, HotKeyAction::primary);
    if (registration.succeeded()) {
        primaryHotKeyRef = registration.hotKeyRef;
        primaryShortcut = shortcut;
        primaryShortcutIsRegistered = true;
        primaryShortcutStatusText = readyStatusText(shortcut);
        storePrimaryShortcut();
        return true;
    }
    restorePrimaryShortcut(label, registration.status);
    return false;
}

void AppDelegate::restorePrimaryShortcut(const std::string& refusedLabel, OSStatus refusalStatus) {
    const std::string label = primaryShortcut.displayText();
    const HotKeyRegistration registration = registerHotKey(primaryShortcut, HotKeyAction::primary);
    primaryShortcutIsRegistered = registration.succeeded();
    if (registration.succeeded()) {
        primaryHotKeyRef = registration.hotKeyRef;
        primaryShortcutStatusText = refusedLabel + " is unavailable. Restored " + label + ".";
    } else {
        // The status of the shortcut that the person asked for: that is the one they can do something about.
        primaryShortcutStatusText = refusedLabel + " is unavailable, and " + label +
                                    " could not be restored. macOS returned " + std::to_string(refusalStatus) + ".";
    }
}

OSStatus AppDelegate::hotKeyPressed(EventHandlerCallRef /*call*/, EventRef event, void* userData) {
    if (event == nullptr || userData == nullptr) {
        return 0;
    }
    auto* const controller = static_cast<AppDelegate*>(userData);
    controller->assertMainThread("hotKeyPressed");
    EventHotKeyID hotKeyID;
    const OSStatus status = controller->platform_.hotKeys.GetEventParameter(
        event, kEventParamDirectObject, typeEventHotKeyID, sizeof(EventHotKeyID), hotKeyID);
    if (status != 0) {
        return status;
    }
    // The action runs on a later turn of the loop, when the press has been dealt with; the task keeps the controller.
    controller->platform_.mainQueue.async(
        [holder = controller->shared_from_this(), id = hotKeyID.id] { holder->performHotKeyAction(id); });
    return 0;
}

void AppDelegate::performHotKeyAction(std::uint32_t id) {
    switch (static_cast<HotKeyAction>(id)) {
        case HotKeyAction::primary:
            teleportPrimary();
            break;
        case HotKeyAction::nextDisplay:
            teleportNextDisplay();
            break;
        case HotKeyAction::previousDisplay:
            teleportPreviousDisplay();
            break;
        case HotKeyAction::savedPoint:
            teleportSavedPoint();
            break;
        case HotKeyAction::saveCurrentPoint:
            saveCurrentPoint();
            break;
    }
}

void AppDelegate::unregisterHotKeys() {
    releasePrimaryHotKey();
    for (EventHotKeyRef hotKeyRef : secondaryHotKeyRefs) {
        platform_.hotKeys.UnregisterEventHotKey(hotKeyRef);
    }
    secondaryHotKeyRefs.clear();
    primaryShortcutIsRegistered = false;
    if (eventHandlerRef != nullptr) {
        platform_.hotKeys.RemoveEventHandler(eventHandlerRef);
    }
}

}  // namespace vantrel
