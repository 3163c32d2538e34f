#pragma once

#include <gio/gio.h>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "Vantrel/Desktop/Helpers/Helper.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"
#include "Vantrel/Platform/ItemPresenter.hpp"
#include "Vantrel/Platform/StatusItem.hpp"

namespace vantrel::desktop {

class DesktopStatusItem;

/// The panel of a Linux desktop, whichever it is: a StatusNotifier host, an old system tray, or none.
class DesktopStatusBar final : public StatusBar {
  public:
    /// What shows an item where no StatusNotifier host does; may give null.
    using PresenterMaker = std::function<std::unique_ptr<ItemPresenter>(ItemPresenter::Events events)>;

    /// `startOverlay` starts the program that draws on the screen.
    DesktopStatusBar(PresenterMaker makePresenter, Helper::Start startOverlay);
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

    std::unique_ptr<ItemPresenter> makePresenter(ItemPresenter::Events events) {
        return makePresenter_(std::move(events));
    }
    [[nodiscard]] const Helper::Start& startOverlay() const { return startOverlay_; }

    PresenterMaker makePresenter_;
    Helper::Start startOverlay_;
    GObjectPointer<GDBusConnection> bus_;
    std::vector<DesktopStatusItem*> items_;
};

}  // namespace vantrel::desktop
