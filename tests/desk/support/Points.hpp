#pragma once

#include <ostream>

namespace vantrel::desk {

/// A point as the agent counts: the origin is the main display's top-left corner.
struct MainPoint {
    int x = 0;
    int y = 0;

    bool operator==(const MainPoint&) const = default;
};

/// A point as the X server counts: the origin is the root window's top-left corner.
struct RootPoint {
    int x = 0;
    int y = 0;

    bool operator==(const RootPoint&) const = default;
};

/// A display's place as the agent counts.
struct MainRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

inline std::ostream& operator<<(std::ostream& out, const MainPoint& point) {
    return out << "main(" << point.x << ", " << point.y << ")";
}

inline std::ostream& operator<<(std::ostream& out, const RootPoint& point) {
    return out << "root(" << point.x << ", " << point.y << ")";
}

}  // namespace vantrel::desk
