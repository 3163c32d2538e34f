#pragma once

#include <cstdint>

namespace vantrel::wayland {

/// A place on an output, in fractions of its width and height from its top-left corner.
struct OutputFraction {
    double x = 0;
    double y = 0;
};

/// What an absolute pointer device that belongs to an output has to say for the pointer to come to the place: the
/// compositor turns a device with its output (wl_output.transform), so the device must turn back.
constexpr OutputFraction onDeviceOf(std::int32_t transform, OutputFraction place) {
    switch (transform) {
        case 1:
            return {place.y, 1 - place.x};
        case 2:
            return {1 - place.x, 1 - place.y};
        case 3:
            return {1 - place.y, place.x};
        case 4:
            return {1 - place.x, place.y};
        case 5:
            return {place.y, place.x};
        case 6:
            return {place.x, 1 - place.y};
        case 7:
            return {1 - place.y, 1 - place.x};
        default:
            return place;
    }
}

}  // namespace vantrel::wayland
