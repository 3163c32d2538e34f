#pragma once

#include <gio/gio.h>

#include <memory>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::desktop {

/// Keeps a flood of messages from filling the loop. GLib serves in one turn all that is ready at one priority, and its
/// bus thread makes a source of every message as fast as they come: thousands of calls for the menu would be answered
/// before the next key press. This has that thread read on only when the loop has served what was read; so a turn has a
/// few messages, and the rest waits outside the process.
class BusFlowControl {
  public:
    explicit BusFlowControl(GDBusConnection* bus);
    ~BusFlowControl();
    BusFlowControl(const BusFlowControl&) = delete;
    BusFlowControl& operator=(const BusFlowControl&) = delete;

  private:
    class Flow;

    static GDBusMessage* filter(GDBusConnection* bus, GDBusMessage* message, gboolean isIncoming, gpointer data);
    static gboolean loopIsHere(gpointer data);
    static void release(gpointer data);

    GObjectPointer<GDBusConnection> bus_;
    std::shared_ptr<Flow> flow_;
    guint filter_;
};

}  // namespace vantrel::desktop
