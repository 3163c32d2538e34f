#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Vantrel/Desktop/StatusItem/BusCalls.hpp"
#include "Vantrel/Desktop/StatusItem/PanelPrograms.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::desktop {

/// Keeps an item registered with the bus's StatusNotifierWatcher, whichever program has that role and whenever it
/// comes, and follows whether a panel (a host) shows what is registered there. Wakes up only when the bus reports a
/// change, and for the few retries after a refused registration.
class WatcherRegistration {
  public:
    /// `service` is what the watcher is told: the item's bus name or its object path. `changed` is called when one of
    /// the answers below changes.
    WatcherRegistration(GDBusConnection* bus, std::string service, std::function<void()> changed);
    ~WatcherRegistration();
    WatcherRegistration(const WatcherRegistration&) = delete;
    WatcherRegistration& operator=(const WatcherRegistration&) = delete;

    /// Whether the item is registered and a host shows registered items.
    [[nodiscard]] bool isShown() const { return isRegistered_ && hasHost_; }

    /// Whether that host is known to draw the item's label.
    [[nodiscard]] bool drawsLabel() const { return isShown() && program_.drawsLabel; }

    /// Whether that host is known to show no label before it is told of another one, once it listens.
    [[nodiscard]] bool missesFirstLabel() const { return isShown() && program_.missesFirstLabel; }

    /// Whether that host is known to be built with Qt.
    [[nodiscard]] bool isQtHost() const { return program_.isQt; }

    /// Whether that host is known to open the menu itself when the item refuses to be activated.
    [[nodiscard]] bool opensRefusedMenu() const { return program_.opensRefusedMenu; }

  private:
    struct BusCallbacks;

    void watcherAppeared(const std::string& owner);
    void watcherVanished();
    void hostsChanged();
    void registerItem();
    void scheduleRetry();
    void askForHost();
    void askForProcess(const std::string& owner);

    GObjectPointer<GDBusConnection> bus_;
    std::string service_;
    std::function<void()> changed_;
    std::unique_ptr<BusCalls> calls_;  ///< those to the present watcher
    guint watchedName_ = 0;
    guint hostSignals_ = 0;
    LoopSource retry_;
    unsigned refusals_ = 0;
    bool isRegistered_ = false;
    bool hasHost_ = false;
    PanelProgram program_;  ///< of the present watcher
};

}  // namespace vantrel::desktop
