#include "Vantrel/Backends/Wayland/WaylandEventSource.hpp"

#include <utility>

namespace vantrel::wayland {

struct WaylandEventSource::State {
    WaylandConnection& connection;
    Events events;
    GPollFD descriptor{};
};

/// GLib allocates a source itself and asks only that it begin with a GSource.
struct WaylandEventSource::Source {
    GSource base;
    State* state;
};

WaylandEventSource::WaylandEventSource(WaylandConnection& connection, Events events) {
    static GSourceFuncs functions{&prepare, &check, &dispatch, nullptr, nullptr, nullptr};
    auto state = std::make_unique<State>(State{connection, std::move(events), {}});
    state->descriptor.fd = wl_display_get_fd(connection.get());
    state->descriptor.events = G_IO_IN | G_IO_HUP | G_IO_ERR;

    GSource* source = g_source_new(&functions, sizeof(Source));
    source_ = reinterpret_cast<Source*>(source);
    source_->state = state.release();
    g_source_set_static_name(source, "Wayland compositor");
    g_source_set_priority(source, G_PRIORITY_HIGH);
    // Nothing here runs a loop of its own. Otherwise GLib wakes itself up at each dispatch.
    g_source_set_can_recurse(source, TRUE);
    g_source_add_poll(source, &source_->state->descriptor);
    g_source_attach(source, nullptr);
}

WaylandEventSource::~WaylandEventSource() {
    GSource* source = &source_->base;
    const std::unique_ptr<State> state(source_->state);
    g_source_destroy(source);
    g_source_unref(source);
}

// The library would have a reader announce itself here and read or give up in check(). But GLib leaves out the check of
// a source when one of higher priority is ready, and whoever then waits for the compositor in that one's dispatch would
// wait for the announced reader, which is itself: for ever. Since one thread alone reads, nothing needs announcing.
gboolean WaylandEventSource::prepare(GSource* source, gint* timeout) {
    State& state = *reinterpret_cast<Source*>(source)->state;
    *timeout = -1;
    state.events.turnBegan();
    const bool isSent = state.connection.flush();
    state.descriptor.events = static_cast<gushort>(G_IO_IN | G_IO_HUP | G_IO_ERR | (isSent ? 0 : G_IO_OUT));
    return state.connection.hasQueuedEvents() || state.connection.isLost() ? TRUE : FALSE;
}

gboolean WaylandEventSource::check(GSource* source) {
    const State& state = *reinterpret_cast<Source*>(source)->state;
    return state.descriptor.revents != 0 ? TRUE : FALSE;
}

gboolean WaylandEventSource::dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    State& state = *reinterpret_cast<Source*>(source)->state;
    state.connection.drain();
    if (!state.connection.isLost()) {
        state.events.handled();
        return G_SOURCE_CONTINUE;
    }
    if (auto connectionLost = std::exchange(state.events.connectionLost, nullptr)) {
        connectionLost();
    }
    return G_SOURCE_REMOVE;
}

}  // namespace vantrel::wayland
