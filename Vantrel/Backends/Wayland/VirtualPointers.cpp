#include "Vantrel/Backends/Wayland/VirtualPointers.hpp"

#include <algorithm>
#include <cmath>

#include "Vantrel/Backends/Wayland/OutputTransform.hpp"

namespace vantrel::wayland {

namespace {

/// The steps of a device on a length in points: finer than the fractions in which the protocol tells of the pointer.
constexpr int stepsOfAPoint = 1024;

std::uint32_t stepsOf(double fraction, std::int32_t length) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(fraction, 0.0, 1.0) * length * stepsOfAPoint));
}

std::uint32_t milliseconds() {
    const auto now = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now().time_since_epoch());
    return static_cast<std::uint32_t>(now.count());
}

}  // namespace

void VirtualPointers::warp(std::span<const Output> outputs, LayoutPoint point) {
    if (manager_ == nullptr) {
        return;
    }
    const Output& output = outputAt(outputs, point);
    // Made anew each time: a compositor that reads its configuration again forgets, without a word, which output a
    // device belongs to. The former one goes only then, so that the seat always has a pointer.
    latest_.reset(
        zwlr_virtual_pointer_manager_v1_create_virtual_pointer_with_output(manager_, seat_.get(), output.handle.get()));
    const OutputDescription& place = output.description;
    const OutputFraction fraction =
        onDeviceOf(place.transform, {.x = (point.x - place.x) / place.width, .y = (point.y - place.y) / place.height});
    zwlr_virtual_pointer_v1_motion_absolute(latest_.get(), milliseconds(), stepsOf(fraction.x, place.width),
                                            stepsOf(fraction.y, place.height), stepsOf(1, place.width),
                                            stepsOf(1, place.height));
    zwlr_virtual_pointer_v1_frame(latest_.get());
}

void VirtualPointers::provideDevice() {
    if (manager_ != nullptr) {
        unbound_.reset(zwlr_virtual_pointer_manager_v1_create_virtual_pointer(manager_, seat_.get()));
    }
}

void VirtualPointers::stir() {
    if (!unbound_) {
        provideDevice();
    }
    if (!unbound_) {
        return;
    }
    zwlr_virtual_pointer_v1_motion(unbound_.get(), milliseconds(), 0, 0);
    zwlr_virtual_pointer_v1_frame(unbound_.get());
}

}  // namespace vantrel::wayland
