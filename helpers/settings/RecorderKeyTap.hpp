#pragma once

#include <QWidget>
#include <cstdint>
#include <memory>

#include "Vantrel/Interface/ShortcutRecorderButton.hpp"

namespace vantrel::qt {

/// Takes the keyboard for a recorder while its window is active, so that no hot key and no desktop gets the chord
/// first. The keyboard is let go when the window loses the focus and taken again when it returns. After the recording
/// the chord's keys are kept until they are up: their repeats would press buttons, close the window or set off the hot
/// key that was just recorded.
class RecorderKeyTap {
  public:
    /// The one for the windowing system that Qt runs on; null where there is none. `window` is a top-level window that
    /// outlives the tap.
    static std::unique_ptr<RecorderKeyTap> make(QWidget& window);

    virtual ~RecorderKeyTap() = default;
    RecorderKeyTap(const RecorderKeyTap&) = delete;
    RecorderKeyTap& operator=(const RecorderKeyTap&) = delete;

    /// Hands key events whose type is in the mask to the handler until the monitor is released.
    virtual std::unique_ptr<EventMonitor> record(std::uint32_t mask, ShortcutRecorderButton::EventHandler handler) = 0;

    /// Gives everything free at once.
    virtual void letGo() = 0;

  protected:
    RecorderKeyTap() = default;

    /// The monitor of a new recording.
    std::unique_ptr<EventMonitor> startRecording(std::uint32_t mask, ShortcutRecorderButton::EventHandler handler);
    /// Ends the recording, whose monitor may live on. To be called by destructors.
    void endRecording();
    [[nodiscard]] bool isRecording() const { return monitor_ != nullptr; }

    /// Hands the event to the handler; whether it is swallowed.
    bool deliver(const KeyEvent& event);

    /// The recording has ended.
    virtual void stopRecording() = 0;

  private:
    class Monitor;

    Monitor* monitor_ = nullptr;
    std::uint32_t mask_ = 0;
    ShortcutRecorderButton::EventHandler handler_;
};

}  // namespace vantrel::qt
