#include "Vantrel/Interface/StatusMenu.hpp"

#include <string>
#include <utility>

namespace vantrel {

namespace {

MenuItem command(std::string title, std::function<void()> action, std::string keyEquivalent = "") {
    return MenuItem{.title = std::move(title),
                    .keyEquivalent = std::move(keyEquivalent),
                    .isEnabled = true,
                    .isSeparator = false,
                    .action = std::move(action),
                    .representedObject = {}};
}

MenuItem enabledIf(bool condition, MenuItem item) {
    item.isEnabled = condition;
    return item;
}

MenuItem information(std::string title) {
    return enabledIf(false, command(std::move(title), nullptr));
}

MenuItem separator() {
    MenuItem item = information("");
    item.isSeparator = true;
    return item;
}

std::string shortcutLine(const StatusMenuState& state) {
    return (state.primaryShortcutIsRegistered ? "Shortcut: " : "Shortcut unavailable: ") +
           state.primaryShortcut.displayText();
}

std::string modeLine(VantrelMode mode) {
    return "Mode: " + std::string(title(mode));
}

std::string savedPointsLine(std::size_t count) {
    switch (count) {
        case 0:
            return "Saved Points: none";
        case 1:
            return "Saved Points: 1 point";
        default:
            return "Saved Points: " + std::to_string(count) + " points";
    }
}

}  // namespace

Menu makeStatusMenu(const StatusMenuState& state, const StatusMenuActions& actions) {
    const bool hasSavedPoints = state.savedPointCount > 0;
    return {
        information("Vantrel"),
        separator(),
        command("Teleport Now", actions.teleportPrimary),
        command("Next Display", actions.teleportNextDisplay),
        command("Previous Display", actions.teleportPreviousDisplay),
        separator(),
        command("Save Current Point", actions.saveCurrentPoint),
        enabledIf(hasSavedPoints, command("Teleport Saved Point", actions.teleportSavedPoint)),
        enabledIf(hasSavedPoints, command("Clear Saved Points", actions.clearSavedPoints)),
        separator(),
        command("Settings...", actions.openSettings, ","),
        information(shortcutLine(state)),
        information(modeLine(state.mode)),
        information(savedPointsLine(state.savedPointCount)),
        separator(),
        command("Quit Vantrel", actions.quit, "q"),
    };
}

}  // namespace vantrel
