#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Vantrel/Desktop/StatusItem/WatcherRegistration.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::desktop {

/// The item as panels see it over the bus: the StatusNotifierItem object, its name, and its registration.
class StatusNotifierItem {
  public:
    struct Texts {
        std::string label;
        std::string toolTip;
    };

    struct Events {
        std::function<void()> presenceChanged;  ///< isShown() or another answer of the registration changed
        std::function<void()> menuWanted;       ///< a host left opening the menu to the item
    };

    /// `menuPath` is the object that serves the menu on the same connection.
    StatusNotifierItem(GDBusConnection* bus, std::string menuPath, Texts texts, Events events);
    ~StatusNotifierItem();
    StatusNotifierItem(const StatusNotifierItem&) = delete;
    StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

    void setLabel(const std::string& label);
    void setToolTip(const std::string& toolTip);

    [[nodiscard]] bool isShown() const { return registration_ && registration_->isShown(); }
    [[nodiscard]] bool drawsLabel() const { return registration_ && registration_->drawsLabel(); }
    [[nodiscard]] bool isQtHost() const { return registration_ && registration_->isQtHost(); }

  private:
    struct BusCallbacks;

    [[nodiscard]] bool opensRefusedMenu() const { return registration_ && registration_->opensRefusedMenu(); }
    void requestName();
    void registerAs(const std::string& service);
    [[nodiscard]] GVariant* property(const std::string& name) const;
    void announceLabel(const std::string& label);
    void emitSignal(const char* name, GVariant* arguments);

    GObjectPointer<GDBusConnection> bus_;
    std::string menuPath_;
    Texts texts_;
    Events events_;
    GObjectPointer<GCancellable> cancellable_;
    guint objectRegistration_ = 0;
    std::unique_ptr<WatcherRegistration> registration_;
    LoopSource announcing_;
};

}  // namespace vantrel::desktop
