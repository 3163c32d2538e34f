#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Vantrel/Channel/Message.hpp"

namespace vantrel {

/// One row of the menu at the pointer.
struct MenuRow {
    bool isSeparator = false;
    bool isEnabled = false;
    std::string title;          ///< UTF-8
    std::string keyEquivalent;  ///< pressed with the primary modifier; empty for none

    bool operator==(const MenuRow&) const = default;
};

/// A text on the screen.
struct ScreenText {
    std::string text;      ///< UTF-8
    double fontSize = 12;  ///< points
    bool isSemibold = true;

    bool operator==(const ScreenText&) const = default;
};

/// What the agent and the program for its messages tell each other. Each reader gives none for any other message.
namespace screen_messages {

// To the program.
Message showText(const ScreenText& text);
std::optional<ScreenText> shownText(const Message& message);
inline constexpr auto hideText = "hide-text";
Message openMenu(const std::vector<MenuRow>& rows);  ///< at the pointer
std::optional<std::vector<MenuRow>> openedMenu(const Message& message);
Message updateMenu(const std::vector<MenuRow>& rows);  ///< does nothing unless the menu is open
std::optional<std::vector<MenuRow>> updatedMenu(const Message& message);

// To the agent.
Message chooseRow(std::uint32_t row);
std::optional<std::uint32_t> chosenRow(const Message& message);
inline constexpr auto menuClosed = "menu-closed";

}  // namespace screen_messages

}  // namespace vantrel
