#include "tests/soak/Typist.hpp"

#include <xcb/xtest.h>

#include <algorithm>

namespace vantrel::soak {

xcb_keycode_t Typist::keycode(std::string_view name) {
    auto found = keycodes_.find(name);
    if (found == keycodes_.end()) {
        found = keycodes_.emplace(name, keyboard_.keycode(name)).first;
    }
    return found->second;
}

void Typist::send(std::uint8_t type, xcb_keycode_t keycode) {
    xcb_test_fake_input(connection_.get(), type, keycode, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

void Typist::type(const desk::Chord& chord) {
    for (const auto name : chord) {
        send(XCB_KEY_PRESS, keycode(name));
    }
    for (auto name = chord.rbegin(); name != chord.rend(); ++name) {
        send(XCB_KEY_RELEASE, keycode(*name));
    }
    xcb_flush(connection_.get());
}

}  // namespace vantrel::soak
