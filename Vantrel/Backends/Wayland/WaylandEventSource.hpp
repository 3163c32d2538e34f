#pragma once

#include <glib.h>

#include <functional>
#include <memory>

#include "Vantrel/Backends/Wayland/WaylandConnection.hpp"

namespace vantrel::wayland {

/// Serves a connection from the main loop: events are handled, requests are sent before the loop sleeps.
class WaylandEventSource {
  public:
    /// `turnBegan` runs in each turn of the loop, before anything else does; `handled` after events were handled;
    /// `connectionLost` once, when the compositor goes away. The connection outlives the source.
    struct Events {
        std::function<void()> turnBegan;
        std::function<void()> handled;
        std::function<void()> connectionLost;
    };

    WaylandEventSource(WaylandConnection& connection, Events events);
    ~WaylandEventSource();
    WaylandEventSource(const WaylandEventSource&) = delete;
    WaylandEventSource& operator=(const WaylandEventSource&) = delete;

  private:
    struct State;
    struct Source;
    static gboolean prepare(GSource* source, gint* timeout);
    static gboolean check(GSource* source);
    static gboolean dispatch(GSource* source, GSourceFunc callback, gpointer data);

    Source* source_;
};

}  // namespace vantrel::wayland
