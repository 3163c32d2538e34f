#pragma once

#include <ostream>

namespace vantrel::desk {

/// A point of a compositor's layout, in points. On the tests' desks the main display stands at (0, 0), so these are the
/// agent's numbers, too.
struct LayoutPoint {
    double x = 0;
    double y = 0;

    bool operator==(const LayoutPoint&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const LayoutPoint& point) {
    return out << "layout(" << point.x << ", " << point.y << ")";
}

}  // namespace vantrel::desk
