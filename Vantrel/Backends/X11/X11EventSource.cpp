#include "Vantrel/Backends/X11/X11EventSource.hpp"

#include <utility>

namespace vantrel::x11 {

namespace {

struct State {
    X11Connection& connection;
    std::function<void()> turnBegan;
    std::function<void()> connectionLost;
    GPollFD descriptor{};
};

}  // namespace

/// GLib allocates a source itself and asks only that it begin with a GSource.
struct X11EventSource::Source {
    GSource base;
    State* state;
};

X11EventSource::X11EventSource(X11Connection& connection, std::function<void()> turnBegan,
                               std::function<void()> connectionLost) {
    static GSourceFuncs functions{&prepare, &check, &dispatch, nullptr, nullptr, nullptr};
    auto state = std::make_unique<State>(State{connection, std::move(turnBegan), std::move(connectionLost), {}});
    state->descriptor.fd = xcb_get_file_descriptor(connection.get());
    state->descriptor.events = G_IO_IN | G_IO_HUP | G_IO_ERR;

    GSource* source = g_source_new(&functions, sizeof(Source));
    source_ = reinterpret_cast<Source*>(source);
    source_->state = state.release();
    g_source_set_static_name(source, "X server");
    g_source_set_priority(source, G_PRIORITY_HIGH);
    // Nothing here runs a loop of its own. Otherwise GLib takes the descriptor out of its list for each dispatch and
    // puts it back, waking itself up each time: two writes, a read and a turn of the loop between a press and its task.
    g_source_set_can_recurse(source, TRUE);
    g_source_add_poll(source, &source_->state->descriptor);
    g_source_attach(source, nullptr);
}

X11EventSource::~X11EventSource() {
    GSource* source = &source_->base;
    const std::unique_ptr<State> state(source_->state);
    g_source_destroy(source);
    g_source_unref(source);
}

gboolean X11EventSource::prepare(GSource* source, gint* timeout) {
    State& state = *reinterpret_cast<Source*>(source)->state;
    *timeout = -1;
    state.turnBegan();
    xcb_flush(state.connection.get());
    // An event that was read while somebody waited for a reply leaves the descriptor silent.
    state.connection.takeQueued();
    return state.connection.hasPendingEvents() || state.connection.isLost() ? TRUE : FALSE;
}

gboolean X11EventSource::check(GSource* source) {
    State& state = *reinterpret_cast<Source*>(source)->state;
    state.connection.takeQueued();
    return state.descriptor.revents != 0 || state.connection.hasPendingEvents() ? TRUE : FALSE;
}

gboolean X11EventSource::dispatch(GSource* source, GSourceFunc /*callback*/, gpointer /*data*/) {
    State& state = *reinterpret_cast<Source*>(source)->state;
    state.connection.drain();
    state.connection.dispatchPending();
    if (!state.connection.isLost()) {
        return G_SOURCE_CONTINUE;
    }
    if (auto connectionLost = std::exchange(state.connectionLost, nullptr)) {
        connectionLost();
    }
    return G_SOURCE_REMOVE;
}

}  // namespace vantrel::x11
