#pragma once

#include <functional>

#include "Vantrel/Backends/X11/X11Connection.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::x11 {

/// Serves a connection from the main loop: events get their turn, requests are sent before the loop sleeps.
class X11EventSource {
  public:
    /// `turnBegan` runs in each turn of the loop, before events are looked for; `connectionLost` once, when the server
    /// goes away. The connection outlives the source.
    X11EventSource(X11Connection& connection, std::function<void()> turnBegan, std::function<void()> connectionLost);
    ~X11EventSource() = default;
    X11EventSource(const X11EventSource&) = delete;
    X11EventSource& operator=(const X11EventSource&) = delete;

  private:
    bool isReady();
    void serve();

    X11Connection& connection_;
    std::function<void()> turnBegan_;
    std::function<void()> connectionLost_;
    LoopSource source_;
};

}  // namespace vantrel::x11
