#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "tests/desk/support/DisplayLayout.hpp"
#include "tests/desk/support/Points.hpp"
#include "tests/desk/support/Wait.hpp"
#include "tests/desk/support/XConnection.hpp"

namespace vantrel::desk {

/// Every move of the pointer, as the server tells it, and every warp even to where the pointer already is: unlike a
/// client that keeps asking, it misses none. Sees the pointer wherever no window asks for its moves itself.
class PointerTrace {
  public:
    struct Move {
        MainPoint to;
        std::chrono::steady_clock::time_point seen;  ///< when the event was read here
    };

    /// Connects and sees the moves from now on; throws when the server does not let it.
    PointerTrace(const std::string& displayName, const DisplayLayout& layout);

    /// Forgets the moves up to now.
    void forget();

    /// Waits for the next move; false when there is none before the deadline.
    bool waitForMove(Duration deadline = generousDeadline);

    /// Waits until there are so many moves since the last forget(); false when there are fewer at the deadline.
    bool waitForMoves(std::size_t count, Duration deadline = generousDeadline);

    /// Reads moves until one goes to the point; false when none does before the deadline.
    bool waitForMoveTo(MainPoint point, Duration deadline = generousDeadline);

    /// All moves since the last forget(), up to now.
    const std::vector<Move>& moves();

    /// The points of moves().
    std::vector<MainPoint> path();

  private:
    bool takeEvent();
    void takeEvents();

    XConnection connection_;
    const DisplayLayout& layout_;
    std::vector<Move> moves_;
};

}  // namespace vantrel::desk
