#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "Vantrel/Channel/MessageBody.hpp"

namespace vantrel {

/// One row of the menu at the pointer.
struct MenuRow {
    bool isSeparator = false;
    bool isEnabled = false;
    std::string title;          ///< UTF-8
    std::string keyEquivalent;  ///< pressed with the primary modifier; empty for none

    static auto fields(auto& row) { return std::tie(row.isSeparator, row.isEnabled, row.title, row.keyEquivalent); }
    bool operator==(const MenuRow&) const = default;
};

// What the agent tells the program for its messages.

/// Shows a text on the screen.
struct ScreenText {
    static constexpr auto name = "show-text";

    std::string text;      ///< UTF-8
    double fontSize = 12;  ///< points
    bool isSemibold = true;

    static auto fields(auto& text) { return std::tie(text.text, text.fontSize, text.isSemibold); }
    bool operator==(const ScreenText&) const = default;
};

/// Opens the menu at the pointer.
struct OpenMenu {
    static constexpr auto name = "open-menu";

    std::vector<MenuRow> rows;

    static auto fields(auto& menu) { return std::tie(menu.rows); }
    bool operator==(const OpenMenu&) const = default;
};

/// Gives the menu other rows; does nothing unless it is open.
struct UpdateMenu {
    static constexpr auto name = "update-menu";

    std::vector<MenuRow> rows;

    static auto fields(auto& menu) { return std::tie(menu.rows); }
    bool operator==(const UpdateMenu&) const = default;
};

// What the program tells the agent.

/// A row of the menu was chosen.
struct ChosenRow {
    static constexpr auto name = "row-chosen";

    std::uint32_t row = 0;

    static auto fields(auto& chosen) { return std::tie(chosen.row); }
    bool operator==(const ChosenRow&) const = default;
};

/// Those without anything to say but their name.
namespace screen_messages {

inline constexpr auto hideText = "hide-text";      ///< to the program
inline constexpr auto menuClosed = "menu-closed";  ///< to the agent

}  // namespace screen_messages

}  // namespace vantrel
