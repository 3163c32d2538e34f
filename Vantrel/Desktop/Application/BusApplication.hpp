#pragma once

#include <functional>

#include "Vantrel/Desktop/Loop/URLQueue.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::desktop {

/// The application on the session bus: the name org.vantrel.Vantrel and the interface org.freedesktop.Application, by
/// which the desktop opens URLs and starts the program again. Of several agents on one bus, each on its display, the
/// first has the name, and the next gets it when that one ends.
class BusApplication {
  public:
    struct Events {
        /// URLs to open, with their text as it came.
        std::function<void(URLQueue::Reader urls)> open;
        /// The person started the program although it runs.
        std::function<void()> reopen;
    };

    BusApplication(GDBusConnection* bus, Events events);
    ~BusApplication();
    BusApplication(const BusApplication&) = delete;
    BusApplication& operator=(const BusApplication&) = delete;

  private:
    static void handleCall(GDBusConnection* bus, const gchar* sender, const gchar* objectPath, const gchar* interface,
                           const gchar* method, GVariant* arguments, GDBusMethodInvocation* invocation, gpointer data);
    static void nameRequested(GObject* bus, GAsyncResult* result, gpointer data);

    void registerObject();
    void requestName();
    void activate();
    void open(GVariant* arguments);

    GObjectPointer<GDBusConnection> bus_;
    Events events_;
    GObjectPointer<GCancellable> cancellable_;
    guint registration_ = 0;
    bool isNameRequested_ = false;
};

}  // namespace vantrel::desktop
