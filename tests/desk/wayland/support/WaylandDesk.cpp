#include "tests/desk/wayland/support/WaylandDesk.hpp"

#include <utility>

namespace vantrel::desk {

std::vector<PrivateOutput> WaylandDesk::twoOutputs() {
    return {{.mode = "640x480"}, {.mode = "400x300", .x = -400, .y = 100}};
}

WaylandDesk::WaylandDesk(std::unique_ptr<CompositorProcess> compositor, const std::string& keyboardLayouts,
                         const std::string& keyboardOptions)
    : CompositorDesk(std::move(compositor)), keyboardLayouts_(keyboardLayouts), keyboardOptions_(keyboardOptions) {
    seatPerson();
}

void WaylandDesk::seatPerson() {
    person_ = std::make_unique<SeatClient>(compositor().socket(), keyboardLayouts_, keyboardOptions_);
}

bool WaylandDesk::jump(const Chord& chord, LayoutPoint target) {
    return jump([&] { person_->type(chord); }, target);
}

bool WaylandDesk::jump(const std::string& url, LayoutPoint target) {
    return jump([&] { open(url); }, target);
}

bool WaylandDesk::jump(const std::function<void()>& ask, LayoutPoint target) {
    return CompositorDesk::jump(
        ask, {.pointer = [this] { return person_->pointer(); },
              .waitForTarget = [&](Duration deadline) { return person_->waitFor(target, deadline); }});
}

}  // namespace vantrel::desk
