#pragma once

#include <optional>

#include "VantrelCore/PlatformGeometry.hpp"

namespace vantrel {

/// A fresh event, which carries the pointer's location of the moment it was created.
struct CGEvent {
    CGPoint location;
};

/// Reads the pointer. Reading and warping are separate abilities: on some desktops different mechanisms serve them, and
/// reading may fail for a while (a drag, an open menu).
class PointerReader {
  public:
    virtual ~PointerReader() = default;

    /// A fresh event, or none when the pointer cannot be read now. May take one round trip to the display server.
    virtual std::optional<CGEvent> CGEventCreate() = 0;

    /// The pointer's position in the global display space, in points.
    virtual CGPoint CGEventGetLocation(const CGEvent& event) = 0;
};

/// Moves the pointer.
class PointerWarper {
  public:
    virtual ~PointerWarper() = default;

    /// Puts the pointer at the point of the global display space, in points. Does not wait for the display server.
    virtual void CGWarpMouseCursorPosition(CGPoint position) = 0;

    /// Couples the mouse to the pointer again, at once after a warp, where the platform parts them.
    virtual void CGAssociateMouseAndMouseCursorPosition(bool connected) = 0;
};

}  // namespace vantrel
