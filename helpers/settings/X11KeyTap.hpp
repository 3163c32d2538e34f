#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QWidget>
#include <cstdint>
#include <utility>

#include "helpers/settings/RecorderKeyTap.hpp"

namespace vantrel::qt {

/// The key tap of an X server: the keyboard is grabbed, on Qt's own connection.
class X11KeyTap final : public RecorderKeyTap, public QAbstractNativeEventFilter {
  public:
    X11KeyTap(QWidget& window, Events events) : RecorderKeyTap(std::move(events)), window_(window) {}
    ~X11KeyTap() override;
    X11KeyTap(const X11KeyTap&) = delete;
    X11KeyTap& operator=(const X11KeyTap&) = delete;

    void letGo() override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    void startRecording() override;
    [[nodiscard]] bool hasKeyboard() const override { return isGrabbed_ && keys_; }
    void startFiltering();
    void stopFiltering();
    void grab();
    void ungrab();
    void readKeyboard();
    bool keyPressed(const xcb_key_press_event_t& event);
    bool focusEntered(const xcb_focus_in_event_t& event);
    bool focusLeft(const xcb_focus_out_event_t& event);
    void noteKeymapChange(const xcb_generic_event_t& event);
    [[nodiscard]] bool isOwnFocusEvent(const xcb_focus_in_event_t& event) const;
    [[nodiscard]] bool isActive() const { return isRecording() || keys_.has_value(); }

    QWidget& window_;
    std::uint8_t xkbFirstEvent_ = 0;
    bool isGrabbed_ = false;
    bool isFiltering_ = false;
};

}  // namespace vantrel::qt
