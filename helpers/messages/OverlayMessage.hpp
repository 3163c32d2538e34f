#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::desktop {

/// What the agent and its overlay program tell each other. Each message is one packet on their socket.
struct OverlayMessage {
    enum class Kind : char {
        showText = 'T',    ///< to the overlay: text, font size (points), font weight
        hideText = 'H',    ///< to the overlay
        openMenu = 'M',    ///< to the overlay: rows; at the pointer
        updateMenu = 'U',  ///< to the overlay: rows; does nothing unless the menu is open
        rowChosen = 'R',   ///< to the agent: row
        menuClosed = 'C'   ///< to the agent
    };

    Kind kind;
    std::vector<std::string> fields;  ///< without NUL characters

    bool operator==(const OverlayMessage&) const = default;
};

/// The longest packet; longer ones are not sent.
inline constexpr std::size_t longestOverlayPacket = 65536;

std::string encodedPacket(const OverlayMessage& message);

/// None when the packet is not a message.
std::optional<OverlayMessage> decodedPacket(std::string_view packet);

/// One row of the menu as the overlay draws it.
struct OverlayRow {
    bool isSeparator = false;
    bool isEnabled = false;
    std::string title;
    std::string keyEquivalent;  ///< pressed with the primary modifier; empty for none

    bool operator==(const OverlayRow&) const = default;
};

/// The rows as a message's fields, and back. Fields that do not make up whole rows at the end are left out.
std::vector<std::string> rowFields(const std::vector<OverlayRow>& rows);
std::vector<OverlayRow> rowsFromFields(const std::vector<std::string>& fields);

}  // namespace vantrel::desktop
