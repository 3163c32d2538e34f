#pragma once

#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "Vantrel/Channel/SettingsMessages.hpp"
#include "helpers/settings/RecorderKeys.hpp"

namespace vantrel::qt {

/// Takes the keyboard for a recorder while its window is active, so that no hot key and no desktop gets the chord
/// first. The keyboard is let go when the window loses the focus and taken again when it returns. After the recording
/// the chord's keys are kept until they are up: their repeats would press buttons, close the window or set off the hot
/// key that was just recorded.
class RecorderKeyTap {
  public:
    struct Events {
        /// A key event of a recording.
        std::function<void(const KeyEvent& event)> typed;
        /// Whether the keyboard is taken, where hot keys have to be let go of for that.
        std::function<void(bool isTaken)> taken;
    };

    /// The one for the windowing system that Qt runs on; null where there is none. `window` is a top-level window that
    /// outlives the tap.
    static std::unique_ptr<RecorderKeyTap> make(QWidget& window, Events events);

    virtual ~RecorderKeyTap() = default;
    RecorderKeyTap(const RecorderKeyTap&) = delete;
    RecorderKeyTap& operator=(const RecorderKeyTap&) = delete;

    /// Begins to record, or ends it. Where the desktop captures the keys of this recording, the window's own do not
    /// count, nor does its focus.
    void setRecording(bool isRecording, bool areKeysCaptured);

    /// What the desktop captured.
    void takeCapturedKey(const WindowKey& key);

    /// Gives everything free at once.
    virtual void letGo() = 0;

  protected:
    explicit RecorderKeyTap(Events events) : events_(std::move(events)) {}

    void reportTaken(bool isTaken) const { events_.taken(isTaken); }

    [[nodiscard]] bool isRecording() const { return isRecording_; }
    [[nodiscard]] bool areKeysCaptured() const { return areKeysCaptured_; }

    /// Takes the keyboard if the window is active.
    virtual void startRecording() = 0;
    [[nodiscard]] virtual bool hasKeyboard() const { return keys_.has_value(); }

    // What the keyboard does; whether it is swallowed.
    bool pressed(std::uint8_t keycode, std::uint16_t state);
    bool released(std::uint8_t keycode, std::uint16_t state);

    std::optional<RecorderKeys> keys_;  ///< while recording or while the chord's keys are still down

  private:
    bool deliver(const std::optional<KeyEvent>& event);

    Events events_;
    bool isRecording_ = false;
    bool areKeysCaptured_ = false;
};

}  // namespace vantrel::qt
