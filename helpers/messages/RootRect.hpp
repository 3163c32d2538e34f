#pragma once

namespace vantrel::overlay {

/// A place on the root window, in pixels.
struct RootPoint {
    int x = 0;
    int y = 0;

    bool operator==(const RootPoint&) const = default;
};

/// A part of the root window, in pixels.
struct RootRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const RootRect&) const = default;
};

}  // namespace vantrel::overlay
