#pragma once

#include <cstddef>
#include <functional>

#include "Vantrel/Interface/KeyboardShortcut.hpp"
#include "Vantrel/Interface/SettingEnumerations.hpp"
#include "Vantrel/Platform/StatusItem.hpp"

namespace vantrel {

/// All that the status menu shows.
struct StatusMenuState {
    std::size_t savedPointCount = 0;
    VantrelMode mode = VantrelMode::automatic;
    KeyboardShortcut primaryShortcut;
    bool primaryShortcutIsRegistered = false;
};

/// What the menu's rows do when they are chosen.
struct StatusMenuActions {
    std::function<void()> teleportPrimary;
    std::function<void()> teleportNextDisplay;
    std::function<void()> teleportPreviousDisplay;
    std::function<void()> saveCurrentPoint;
    std::function<void()> teleportSavedPoint;
    std::function<void()> clearSavedPoints;
    std::function<void()> openSettings;
    std::function<void()> quit;
};

/// The status menu, top to bottom: always 16 rows, separators included. A row's position never changes, so the meaning
/// of a click survives a rebuild that happens while the menu is open.
Menu makeStatusMenu(const StatusMenuState& state, const StatusMenuActions& actions);

}  // namespace vantrel
