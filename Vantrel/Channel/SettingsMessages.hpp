#pragma once

#include <cstdint>
#include <string>
#include <tuple>

#include "Vantrel/Channel/MessageBody.hpp"
#include "Vantrel/Interface/KeyEvent.hpp"
#include "Vantrel/Interface/PreferencesWindowView.hpp"

namespace vantrel {

/// All that the settings window shows. The agent sends it whole whenever any of it changes.
struct WindowContent {
    static constexpr auto name = "content";

    std::uint64_t lastReport = 0;  ///< the number of the last report that this takes account of
    std::string recorderTitle;
    bool recordsKeys = false;  ///< whether a shortcut is recorded: key events are to be reported
    /// Whether the desktop takes the keys of a recording from the window, and the agent hands them on (WindowKey).
    bool keysAreCaptured = false;
    PreferencesWindowContent controls{};
    std::uint32_t rows = 0;         ///< how many saved points there are
    std::uint32_t rowsVersion = 0;  ///< another number means other rows

    static auto fields(auto& content) {
        return std::tie(content.lastReport, content.recorderTitle, content.recordsKeys, content.keysAreCaptured,
                        content.controls, content.rows, content.rowsVersion);
    }
    bool operator==(const WindowContent&) const = default;
};

/// Something that the person did in the settings window.
struct WindowReport {
    static constexpr auto name = "report";

    enum class Kind : std::uint32_t {
        shown,            ///< value: whether the window is shown (1) or closed (0)
        recorderPressed,  ///< the recorder's button
        keyboardTaken,    ///< value: whether keys are to reach the recorder and no hot key
        key,              ///< a key event while a shortcut is recorded
        resetPressed,
        modeChosen,       ///< value: the index
        animationChosen,  ///< value: the index
        soundChosen,      ///< value: whether it is checked
        clearPressed,
    };

    std::uint64_t number = 0;  ///< counted from 1 by the window
    Kind kind = Kind::shown;
    std::int32_t value = 0;
    KeyEvent key{};

    static auto fields(auto& report) {
        return std::tie(report.number, report.kind, report.value, report.key.type, report.key.keyCode,
                        report.key.modifierFlags);
    }
    bool operator==(const WindowReport&) const = default;
};

/// The program wants the text of a row of the table of saved points, of the rows of that version: it is drawn.
struct WindowRow {
    static constexpr auto name = "wanted-row";

    std::uint32_t rowsVersion = 0;
    std::uint32_t row = 0;

    static auto fields(auto& row) { return std::tie(row.rowsVersion, row.row); }
    bool operator==(const WindowRow&) const = default;
};

/// The text of a row.
struct WindowRowText {
    static constexpr auto name = "row-text";

    WindowRow row;
    std::string text;

    static auto fields(auto& text) { return std::tie(text.row, text.text); }
    bool operator==(const WindowRowText&) const = default;
};

/// Where the window stood when it was closed, in the windowing system's own coordinates: told to the agent, and by the
/// agent to a program that is new.
struct WindowPlace {
    static constexpr auto name = "place";

    std::int32_t x = 0;
    std::int32_t y = 0;

    static auto fields(auto& place) { return std::tie(place.x, place.y); }
    bool operator==(const WindowPlace&) const = default;
};

/// A key that the desktop has captured for the recorder.
struct WindowKey {
    static constexpr auto name = "captured-key";

    std::uint32_t keycode = 0;  ///< X's
    std::uint32_t state = 0;    ///< X's modifiers, as they were before
    bool isPressed = false;

    static auto fields(auto& key) { return std::tie(key.keycode, key.state, key.isPressed); }
    bool operator==(const WindowKey&) const = default;
};

/// Why there can be no window, in one line.
struct WindowProblem {
    static constexpr auto name = "problem";

    std::string text;

    static auto fields(auto& problem) { return std::tie(problem.text); }
};

/// What the agent says to the program without anything but a name.
namespace settings_messages {

inline constexpr auto show = "show";
inline constexpr auto bringToFront = "bring-to-front";
inline constexpr auto focusRecorder = "focus-recorder";
inline constexpr auto captureEnded = "capture-ended";  ///< by the desktop

}  // namespace settings_messages

}  // namespace vantrel
