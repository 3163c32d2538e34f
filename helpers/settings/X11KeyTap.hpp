#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <optional>

#include "helpers/settings/RecorderKeyTap.hpp"
#include "helpers/settings/RecorderKeys.hpp"

namespace vantrel::qt {

/// Takes the keyboard for a recorder on an X server: while its window is active the keyboard is grabbed, on Qt's own
/// connection, so that no hot key and no window manager gets the chord first. The keyboard is let go when the window
/// loses the focus and taken again when it returns. After the recording the chord's keys are kept until they are up:
/// their repeats would press buttons, close the window or set off the hot key that was just recorded.
class X11KeyTap final : public RecorderKeyTap, public QAbstractNativeEventFilter {
  public:
    /// `window` is a top-level window that outlives the tap.
    explicit X11KeyTap(QWidget& window) : window_(window) {}
    ~X11KeyTap() override;
    X11KeyTap(const X11KeyTap&) = delete;
    X11KeyTap& operator=(const X11KeyTap&) = delete;

    std::unique_ptr<EventMonitor> record(std::uint32_t mask, ShortcutRecorderButton::EventHandler handler) override;
    void letGo() override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    void stopRecording() override;
    void startFiltering();
    void stopFiltering();
    void grab();
    void ungrab();
    void readKeyboard();
    bool keyPressed(const xcb_key_press_event_t& event);
    bool keyReleased(const xcb_key_release_event_t& event);
    bool focusEntered(const xcb_focus_in_event_t& event);
    bool focusLeft(const xcb_focus_out_event_t& event);
    void noteKeymapChange(const xcb_generic_event_t& event);
    [[nodiscard]] bool isOwnFocusEvent(const xcb_focus_in_event_t& event) const;
    [[nodiscard]] bool isActive() const { return isRecording() || keys_.has_value(); }

    QWidget& window_;
    std::optional<RecorderKeys> keys_;  ///< while recording or while the chord's keys are still down
    std::uint8_t xkbFirstEvent_ = 0;
    bool isGrabbed_ = false;
    bool isFiltering_ = false;
};

}  // namespace vantrel::qt
