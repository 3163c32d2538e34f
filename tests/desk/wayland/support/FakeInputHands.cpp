#include "tests/desk/wayland/support/FakeInputHands.hpp"

#include <stdexcept>

namespace vantrel::desk {

FakeInputHands::FakeInputHands(org_kde_kwin_fake_input& input, const KeyboardMap& map) : input_(input), map_(map) {
    org_kde_kwin_fake_input_authenticate(&input_, "Vantrel's tests", "A person's hands");
}

void FakeInputHands::key(std::string_view name, bool isDown) {
    org_kde_kwin_fake_input_keyboard_key(&input_, KeyboardMap::kernelCode(map_.keycode(name)), isDown ? 1 : 0);
}

void FakeInputHands::chooseLayout(unsigned /*number*/) {
    throw std::runtime_error("these hands have no layouts to choose from");
}

void FakeInputHands::moveTo(LayoutPoint point, const std::vector<LayoutArea>& displays) {
    // KWin 6.3 holds the pointer up at the edge between two displays until it has been pushed for a while; with so many
    // pushes it also gets round a corner.
    constexpr int pushes = 24;
    for (const LayoutArea& display : displays) {
        for (int push = 0; display.contains(point) && push < pushes; ++push) {
            send({.x = display.x + display.width / 2.0, .y = display.y + display.height / 2.0});
        }
    }
    send(point);
}

void FakeInputHands::send(LayoutPoint point) {
    org_kde_kwin_fake_input_pointer_motion_absolute(&input_, wl_fixed_from_double(point.x),
                                                    wl_fixed_from_double(point.y));
}

void FakeInputHands::button(bool isDown) {
    org_kde_kwin_fake_input_button(&input_, leftButton, isDown ? 1 : 0);
}

}  // namespace vantrel::desk
