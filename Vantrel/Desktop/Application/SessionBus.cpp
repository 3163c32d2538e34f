#include "Vantrel/Desktop/Application/SessionBus.hpp"

#include <string>
#include <utility>

#include "Vantrel/Handles/LoopSource.hpp"
#include "Vantrel/Handles/SessionBusOffer.hpp"

namespace vantrel::desktop {

SessionBus::SessionBus(Connected connected) : connected_(std::move(connected)), cancellable_(g_cancellable_new()) {}

SessionBus::~SessionBus() {
    g_cancellable_cancel(cancellable_.get());
}

void SessionBus::connect() {
    if (isSessionBusOffered()) {
        g_bus_get(G_BUS_TYPE_SESSION, cancellable_.get(), &finish, this);
    }
}

void SessionBus::flush(std::chrono::milliseconds most) {
    if (!bus_ || g_dbus_connection_is_closed(bus_.get()) != FALSE) {
        return;
    }
    // Of this wait alone: the loop's other sources stay unserved. After a wait in vain nobody looks at it again, so
    // what the flush still tells then reaches nobody.
    const GMainContextPointer context(g_main_context_new());
    bool isOver = false;
    const auto deadline = LoopSource::after(most, [&isOver] { isOver = true; }, {.context = context.get()});
    const auto flushed = [](GObject* bus, GAsyncResult* result, gpointer data) {
        g_dbus_connection_flush_finish(G_DBUS_CONNECTION(bus), result, nullptr);
        *static_cast<bool*>(data) = true;
    };
    g_main_context_push_thread_default(context.get());
    g_dbus_connection_flush(bus_.get(), nullptr, flushed, &isOver);
    while (!isOver) {
        g_main_context_iteration(context.get(), TRUE);
    }
    g_main_context_pop_thread_default(context.get());
}

void SessionBus::finish(GObject* /*source*/, GAsyncResult* result, gpointer data) {
    GError* rawError = nullptr;
    GObjectPointer<GDBusConnection> bus(g_bus_get_finish(result, &rawError));
    const GErrorPointer error(rawError);
    if (!bus) {
        // No bus is no reason to complain: the agent does its work without one. A cancelled call means that this object
        // is gone.
        return;
    }
    auto& self = *static_cast<SessionBus*>(data);
    // GLib would end the process when the bus does (SIGTERM, seen on GLib 2.74).
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    if (g_dbus_connection_is_closed(bus.get()) != FALSE) {
        return;  // gone again before it was told
    }
    self.bus_ = std::move(bus);
    self.connected_(self.bus_.get());
}

}  // namespace vantrel::desktop
