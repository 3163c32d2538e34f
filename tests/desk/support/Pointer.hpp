#pragma once

#include "tests/desk/support/DisplayLayout.hpp"
#include "tests/desk/support/Points.hpp"
#include "tests/desk/support/Wait.hpp"
#include "tests/desk/support/XConnection.hpp"

namespace vantrel::desk {

/// The pointer as a client that keeps asking sees it.
class Pointer {
  public:
    Pointer(XConnection& connection, const DisplayLayout& layout) : connection_(connection), layout_(layout) {}

    [[nodiscard]] MainPoint position();

    /// Moves the pointer as a hand on the mouse does, and waits until it is there; throws when it does not get there.
    void moveTo(MainPoint point, Duration deadline = generousDeadline);

    /// Asks until the pointer is at the point; false when it does not get there before the deadline.
    bool waitFor(MainPoint point, Duration deadline = generousDeadline);

    /// Asks for a while whether the pointer is still at the point; false as soon as it is not.
    bool staysAt(MainPoint point, Duration time = quietTime);

    /// Asks without a pause until the pointer has left the point; false when it has not before the deadline.
    bool catchDeparture(MainPoint point, Duration deadline = generousDeadline);

  private:
    XConnection& connection_;
    const DisplayLayout& layout_;
};

}  // namespace vantrel::desk
