#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "Vantrel/Backends/Common/HotKeyBinder.hpp"
#include "Vantrel/Backends/Wayland/MomentaryKeymap.hpp"
#include "Vantrel/Backends/Wayland/Outputs.hpp"
#include "Vantrel/Backends/Wayland/WaylandConnection.hpp"

namespace vantrel::wayland {

/// Where the pointer is to go.
struct Warp {
    std::optional<LayoutPoint> from;  ///< where it was read just before, if it was
    LayoutPoint to;
    std::span<const Output> outputs;
    LayoutPoint corner;  ///< of the rectangle around all outputs
};

/// What one kind of compositor offers through a door of its own, beside the protocols that it shares with others. What
/// it does not offer, these do.
class Compositor {
  public:
    virtual ~Compositor() = default;

    /// Binds keys; null when it cannot. Asked for once.
    virtual backend::HotKeyBinder* hotKeys() { return nullptr; }

    /// Where the pointer is, earlier warps included; none when it cannot tell, or does not until the deadline: then
    /// surfaces of ours find it out.
    virtual std::optional<LayoutPoint> readPointer(Clock::time_point /*deadline*/) { return std::nullopt; }

    /// The same where such surfaces do not find it out, as while a button is held.
    virtual std::optional<LayoutPoint> readHeldPointer(Clock::time_point /*deadline*/) { return std::nullopt; }

    /// Moves the pointer. Does not wait. False when it cannot: then a virtual pointer does it.
    virtual bool warpPointer(const Warp& /*warp*/) { return false; }

    /// Waits until earlier warps have taken effect. They go another way than Wayland's requests, which could overtake
    /// them.
    virtual void settleWarps(Clock::time_point /*deadline*/) {}

    /// Has it look anew what lies under the pointer. Does not wait. False when it cannot: then a virtual pointer does
    /// it.
    virtual bool lookUnderPointer() { return false; }

    /// Whether the session goes on when the compositor is gone, because something starts it again.
    [[nodiscard]] virtual bool comesBack() const { return false; }
};

/// Where to look for such a door, and what its user may ask of the session.
struct CompositorAddress {
    WaylandConnection& connection;
    const Registry& registry;
    Peer peer;
    std::string seat;  ///< the name of the seat that is served
    ReadKeymap readKeymap;
};

/// Finds the door of one kind of compositor; null when the session's compositor is of another kind.
using CompositorFinder = std::function<std::unique_ptr<Compositor>(const CompositorAddress& address)>;

}  // namespace vantrel::wayland
