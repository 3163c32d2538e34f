#include <gtest/gtest.h>

#include "Vantrel/Backends/Wayland/OutputTransform.hpp"

namespace vantrel::wayland {
namespace {

/// Where a compositor puts the pointer for a device of a turned output: each transform is a reflection (the flipped
/// ones), then a turn by so many quarters.
OutputFraction placeOf(std::int32_t transform, OutputFraction device) {
    const int quarters = transform % 4;
    OutputFraction place = device;
    for (int quarter = 0; quarter < quarters; ++quarter) {
        place = {1 - place.y, place.x};
    }
    if (transform >= 4) {
        place.x = 1 - place.x;
    }
    return place;
}

TEST(OutputTransform, onDeviceOf_everyTransform_isUndoneByTheCompositor) {
    constexpr OutputFraction wanted{0.25, 0.4};
    for (std::int32_t transform = 0; transform < 8; ++transform) {
        const OutputFraction place = placeOf(transform, onDeviceOf(transform, wanted));
        EXPECT_DOUBLE_EQ(place.x, wanted.x) << transform;
        EXPECT_DOUBLE_EQ(place.y, wanted.y) << transform;
    }
}

}  // namespace
}  // namespace vantrel::wayland
