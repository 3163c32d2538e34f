#include "Vantrel/Controller/AppDelegate.hpp"
#include "Vantrel/Interface/PreferencesWindowController.hpp"
#include "Vantrel/Interface/PreferencesWindowView.hpp"
#include "Vantrel/Interface/StatusMenu.hpp"

#include <utility>

namespace vantrel {

namespace {

/// The text that a menu item stands for; none when it stands for nothing or for something else.
const std::string* representedText(const MenuItem& sender) {
    return std::get_if<std::string>(&sender.representedObject);
}

}  // namespace

void AppDelegate::rebuildMenu() {
    assertMainThread("rebuildMenu");
    // The panel may keep a menu for longer than the controller lives.
    const auto action = [weakSelf = weak_from_this()](void (AppDelegate::*operation)()) {
        return [weakSelf, operation] {
            if (const auto self = weakSelf.lock()) {
                (self.get()->*operation)();
            }
        };
    };
    statusItem->setMenu(makeStatusMenu({.savedPointCount = savedPoints.size(),
                                        .mode = mode,
                                        .primaryShortcut = primaryShortcut,
                                        .primaryShortcutIsRegistered = primaryShortcutIsRegistered},
                                       {.teleportPrimary = action(&AppDelegate::teleportPrimary),
                                        .teleportNextDisplay = action(&AppDelegate::teleportNextDisplay),
                                        .teleportPreviousDisplay = action(&AppDelegate::teleportPreviousDisplay),
                                        .saveCurrentPoint = action(&AppDelegate::saveCurrentPoint),
                                        .teleportSavedPoint = action(&AppDelegate::teleportSavedPoint),
                                        .clearSavedPoints = action(&AppDelegate::clearSavedPoints),
                                        .openSettings = action(&AppDelegate::openSettings),
                                        .quit = action(&AppDelegate::quit)}));
}

void AppDelegate::selectMode(const MenuItem& sender) {
    assertMainThread("selectMode");
    const std::string* const text = representedText(sender);
    if (text == nullptr) {
        return;
    }
    const auto newMode = fromRawValue(allModes, *text);
    if (!newMode) {
        return;
    }
    preferencesDidChangeMode(*newMode);
}

void AppDelegate::selectAnimation(const MenuItem& sender) {
    assertMainThread("selectAnimation");
    const std::string* const text = representedText(sender);
    if (text == nullptr) {
        return;
    }
    const auto style = fromRawValue(allAnimationStyles, *text);
    if (!style) {
        return;
    }
    preferencesDidChangeAnimation(*style);
}

void AppDelegate::toggleSound() {
    assertMainThread("toggleSound");
    preferencesDidChangeSound(!soundEnabled);
}

void AppDelegate::openSettings() {
    assertMainThread("openSettings");
    if (!preferencesWindowController) {
        PreferencesWindowViewResult made = platform_.preferencesWindowViews.makePreferencesWindowView();
        if (!made.view) {
            // Nothing is kept: once the program is installed, the next attempt opens the window.
            preferencesWindowFailed(made.problem, made.flashText);
            return;
        }
        preferencesWindowController = PreferencesWindowController::create(std::move(made.view), platform_.mainQueue);
        preferencesWindowController->setDelegate(weak_from_this());
    }
    refreshPreferencesWindow();
    platform_.application.activate(true);
    preferencesWindowController->showWindow();
    preferencesWindowController->window().makeKeyAndOrderFront();
}

void AppDelegate::quit() {
    assertMainThread("quit");
    platform_.application.terminate();
}

}  // namespace vantrel
