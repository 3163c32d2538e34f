#pragma once

#include <cstdint>
#include <functional>

namespace vantrel {

/// A key that a windowing system has captured for a recorder.
struct CapturedKey {
    std::uint32_t keycode = 0;  ///< X's
    std::uint32_t state = 0;    ///< X's modifiers, as they were before
    bool isPressed = false;
};

/// What a windowing system does for the recorder of the settings window, which has the keyboard of its window and, on
/// most desktops, needs no more.
class KeyboardCapture {
  public:
    struct CaptureEvents {
        std::function<void(const CapturedKey& key)> key;
        /// Another click or another window has ended it.
        std::function<void()> ended;
    };

    virtual ~KeyboardCapture() = default;

    /// Whether a recorder has taken the keyboard. A windowing system that catches our hot keys all the same has to let
    /// go of them for so long.
    virtual void setRecording(bool /*isRecording*/) {}

    /// Whether at present it captures all keys for a recorder while one has taken the keyboard, and tells of them. The
    /// window then gets none, and seems to lose the focus.
    [[nodiscard]] virtual bool capturesKeys() const { return false; }

    virtual void setCaptureEvents(CaptureEvents /*events*/) {}
};

}  // namespace vantrel
