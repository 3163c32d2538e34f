#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QTimer>

namespace vantrel::qt {

/// Has the application's colours follow the desktop's preference for light or dark, now and whenever it changes. By
/// itself Qt is light on every desktop but KDE's, unless a platform theme is installed; where one has made it dark,
/// nothing is done.
class DesktopColors final : public QAbstractNativeEventFilter {
  public:
    /// To be made before the first window, and to go before the application.
    DesktopColors();
    ~DesktopColors() override;
    DesktopColors(const DesktopColors&) = delete;
    DesktopColors& operator=(const DesktopColors&) = delete;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    void follow();

    QTimer followSoon_;                     ///< a moment after the desktop has said that something changed
    xcb_atom_t xsettings_ = XCB_ATOM_NONE;  ///< the property that changes with the settings manager's settings
    bool isOurs_ = false;                   ///< whether the present colours were set here
};

}  // namespace vantrel::qt
