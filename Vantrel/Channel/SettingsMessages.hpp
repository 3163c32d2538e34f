#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Vantrel/Channel/Message.hpp"

namespace vantrel {

/// All that the settings window shows. The agent sends it whole whenever any of it changes.
struct WindowContent {
    std::uint64_t lastReport = 0;  ///< the number of the last report that this takes account of
    std::string recorderTitle;
    std::uint32_t recordedEvents = 0;  ///< the mask of the key events to report; 0 unless a shortcut is recorded
    std::string shortcutStatus;
    std::uint32_t shortcutStatusColor = 0;  ///< by the number of SemanticColor
    std::vector<std::string> modes;
    std::int32_t selectedMode = -1;
    std::vector<std::string> animations;
    std::int32_t selectedAnimation = -1;
    bool isSoundChecked = false;
    std::string savedPointsSummary;
    bool isEmptyLabelHidden = false;
    bool isTableHidden = false;
    bool isClearingEnabled = false;
    std::uint32_t rows = 0;         ///< how many saved points there are
    std::uint32_t rowsVersion = 0;  ///< another number means other rows

    bool operator==(const WindowContent&) const = default;
};

/// Something that the person did in the settings window.
struct WindowReport {
    enum class Kind : std::uint32_t {
        shown,            ///< value: whether the window is shown (1) or closed (0)
        recorderPressed,  ///< the recorder's button
        key,              ///< value: the key event's type; key, flags
        resetPressed,
        modeChosen,       ///< value: the index
        animationChosen,  ///< value: the index
        soundChosen,      ///< value: whether it is checked
        clearPressed,
    };

    std::uint64_t number = 0;  ///< counted from 1 by the window
    Kind kind = Kind::shown;
    std::int32_t value = 0;
    std::uint32_t key = 0;
    std::uint32_t flags = 0;

    bool operator==(const WindowReport&) const = default;
};

/// A row of the table of saved points, of the rows of that version.
struct WindowRow {
    std::uint32_t rowsVersion = 0;
    std::uint32_t row = 0;

    bool operator==(const WindowRow&) const = default;
};

/// The text of a row, which is asked for when the row is drawn.
struct WindowRowText {
    WindowRow row;
    std::string text;

    bool operator==(const WindowRowText&) const = default;
};

/// Where the window stands, in the windowing system's own coordinates.
struct WindowPlace {
    std::int32_t x = 0;
    std::int32_t y = 0;

    bool operator==(const WindowPlace&) const = default;
};

/// What the agent and the settings program tell each other. Each reader gives none for any other message.
namespace settings_messages {

// To the program.
Message content(const WindowContent& content);
std::optional<WindowContent> contentOf(const Message& message);
Message rowText(const WindowRowText& text);
std::optional<WindowRowText> rowTextOf(const Message& message);
/// Where the window stood when it was last closed, for a program that is new.
Message place(const WindowPlace& place);
std::optional<WindowPlace> placeOf(const Message& message);
inline constexpr auto show = "show";
inline constexpr auto bringToFront = "bring-to-front";
inline constexpr auto focusRecorder = "focus-recorder";

// To the agent; where the window stands as well, when it is closed.
inline constexpr auto problem = "problem";  ///< why there can be no window: a string, one line
Message report(const WindowReport& report);
std::optional<WindowReport> reportOf(const Message& message);
Message wantRow(const WindowRow& row);
std::optional<WindowRow> wantedRowOf(const Message& message);

}  // namespace settings_messages

}  // namespace vantrel
