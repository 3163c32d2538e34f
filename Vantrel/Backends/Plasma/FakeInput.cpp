#include "Vantrel/Backends/Plasma/FakeInput.hpp"

#include <utility>
#include <vector>

#include "Vantrel/Backends/Plasma/WayPoints.hpp"

namespace vantrel::plasma {

std::unique_ptr<FakeInput> FakeInput::bind(const wayland::Registry& registry) {
    auto device =
        registry.bindFirst<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, wayland::fakeInputVersion);
    return device ? std::unique_ptr<FakeInput>(new FakeInput(std::move(device))) : nullptr;
}

FakeInput::FakeInput(wayland::WaylandPointer<org_kde_kwin_fake_input> device) : device_(std::move(device)) {
    org_kde_kwin_fake_input_authenticate(device_.get(), "Vantrel", "carries the pointer from display to display");
}

void FakeInput::warp(const wayland::Warp& warp) {
    const wayland::Output& target = outputAt(warp.outputs, warp.to);
    const auto from = warp.from ? warp.from : last_;
    const auto way = from ? wayPointsThrough(warp.outputs, outputAt(warp.outputs, *from), target)
                          : wayPointsFromAnywhere(target.description);
    for (const wayland::LayoutPoint point : way) {
        moveTo(point);
    }
    moveTo(warp.to);
    last_ = warp.to;
}

void FakeInput::stir() {
    org_kde_kwin_fake_input_pointer_motion(device_.get(), 0, 0);
}

void FakeInput::moveTo(wayland::LayoutPoint place) {
    org_kde_kwin_fake_input_pointer_motion_absolute(device_.get(), wl_fixed_from_double(place.x),
                                                    wl_fixed_from_double(place.y));
}

}  // namespace vantrel::plasma
