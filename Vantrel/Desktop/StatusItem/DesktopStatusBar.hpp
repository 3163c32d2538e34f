#pragma once

#include <gio/gio.h>

#include <memory>

#include "Vantrel/Desktop/GLibHandles.hpp"
#include "Vantrel/Platform/StatusItem.hpp"

namespace vantrel::desktop {

class DesktopStatusItem;

/// The panel of a Linux desktop, whichever it is: a StatusNotifier host, an old system tray, or none.
class DesktopStatusBar final : public StatusBar {
  public:
    DesktopStatusBar();
    ~DesktopStatusBar() override;
    DesktopStatusBar(const DesktopStatusBar&) = delete;
    DesktopStatusBar& operator=(const DesktopStatusBar&) = delete;

    /// Tells which connection to the session bus to use from now on; null for none. It must be the process's shared
    /// one (g_bus_get). May come at any time, before or after the items; a connection that closes is noticed here.
    void setSessionBus(GDBusConnection* bus);

    /// A new item. It must end before the status bar does.
    std::unique_ptr<StatusItem> statusItem(double length) override;

  private:
    friend class DesktopStatusItem;
    void forget(const DesktopStatusItem& item);

    GObjectPointer<GDBusConnection> bus_;
    std::vector<DesktopStatusItem*> items_;
};

}  // namespace vantrel::desktop
