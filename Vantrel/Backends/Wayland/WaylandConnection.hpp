#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Vantrel/Backends/Wayland/WaylandHandles.hpp"
#include "Vantrel/Handles/LocalSocket.hpp"

namespace vantrel::wayland {

using Clock = std::chrono::steady_clock;

/// One connection to a Wayland compositor. Events are given to the objects' listeners as soon as they are read, also
/// while somebody waits: so a listener only notes what it is told, and calls nobody.
class WaylandConnection {
  public:
    /// Connects to the display that WAYLAND_DISPLAY names; null with one clear line in `error` when that fails.
    static std::unique_ptr<WaylandConnection> open(std::string& error);

    [[nodiscard]] wl_display* get() const { return display_.get(); }

    /// Whether the compositor has gone away, or ended the connection. Nothing arrives after that.
    [[nodiscard]] bool isLost() const { return isLost_ || wl_display_get_error(get()) != 0; }

    /// Whether the compositor ended the connection for something that was asked of it.
    [[nodiscard]] bool isRefused() const;

    /// Why the connection is lost, as one line.
    [[nodiscard]] std::string endReason() const;

    /// The compositor's process; none where the system does not tell.
    [[nodiscard]] std::optional<Peer> peer() const { return peerOf(wl_display_get_fd(get())); }

    /// Sends what was asked for; false when the socket takes no more at present.
    bool flush();

    /// Whether events were read whose listeners have not been told yet.
    [[nodiscard]] bool hasQueuedEvents() const;

    /// Reads what the socket holds, without waiting, and tells the listeners.
    void drain();

    /// Sends what was asked for and handles events until the condition holds. False at the deadline, or when the
    /// compositor goes away.
    bool waitFor(const std::function<bool()>& condition, Clock::time_point deadline);

    /// Waits until the compositor has handled all that was asked up to now, with all events that come of it, or until
    /// `isEnough` holds. False at the deadline, or when it goes away.
    bool synchronize(
        Clock::time_point deadline, const std::function<bool()>& isEnough = [] { return false; });

  private:
    explicit WaylandConnection(WaylandPointer<wl_display> display) : display_(std::move(display)) {}
    void dispatchQueued();

    WaylandPointer<wl_display> display_;
    bool isLost_ = false;
};

}  // namespace vantrel::wayland
