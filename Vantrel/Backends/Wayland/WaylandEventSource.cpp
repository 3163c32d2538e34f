#include "Vantrel/Backends/Wayland/WaylandEventSource.hpp"

#include <utility>

namespace vantrel::wayland {

WaylandEventSource::WaylandEventSource(WaylandConnection& connection, Events events)
    : connection_(connection),
      events_(std::move(events)),
      source_(LoopSource::whenever([this] { return isReady(); }, [this] { serve(); }, {.priority = G_PRIORITY_HIGH},
                                   wl_display_get_fd(connection.get()))) {}

// The library would have a reader announce itself here and read or give up after the loop has slept. But GLib leaves
// out that second question when something of higher priority is ready, and whoever then waits for the compositor would
// wait for the announced reader, which is itself: for ever. Since one thread alone reads, nothing needs announcing.
bool WaylandEventSource::isReady() {
    events_.turnBegan();
    // What a compositor that does not read leaves unsent goes with a later turn.
    connection_.flush();
    return connection_.hasQueuedEvents() || connection_.isLost();
}

void WaylandEventSource::serve() {
    connection_.drain();
    if (!connection_.isLost()) {
        events_.handled();
        return;
    }
    source_.reset();
    events_.connectionLost();
}

}  // namespace vantrel::wayland
