#pragma once

namespace vantrel::overlay {

/// A place on a screen, in the pixels or points that what shows it counts in.
struct Point {
    int x = 0;
    int y = 0;

    bool operator==(const Point&) const = default;
};

/// A part of a screen, in the same.
struct Rect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Rect&) const = default;
};

}  // namespace vantrel::overlay
