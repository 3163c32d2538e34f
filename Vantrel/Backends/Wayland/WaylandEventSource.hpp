#pragma once

#include <functional>

#include "Vantrel/Backends/Wayland/WaylandConnection.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

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
    ~WaylandEventSource() = default;
    WaylandEventSource(const WaylandEventSource&) = delete;
    WaylandEventSource& operator=(const WaylandEventSource&) = delete;

  private:
    bool isReady();
    void serve();

    WaylandConnection& connection_;
    Events events_;
    LoopSource source_;
};

}  // namespace vantrel::wayland
