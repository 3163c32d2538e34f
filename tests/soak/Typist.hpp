#pragma once

#include <map>
#include <string>

#include "tests/desk/support/Keyboard.hpp"

namespace vantrel::soak {

/// Quick hands: looks for a key's place once, where desk::Keyboard asks the server for its keymap with every press.
class Typist {
  public:
    Typist(desk::XConnection& connection, desk::Keyboard& keyboard) : connection_(connection), keyboard_(keyboard) {}

    /// Presses the keys in order and lets go of them in reverse order, all in one breath.
    void type(const desk::Chord& chord);

  private:
    xcb_keycode_t keycode(std::string_view name);
    void send(std::uint8_t type, xcb_keycode_t keycode);

    desk::XConnection& connection_;
    desk::Keyboard& keyboard_;
    std::map<std::string, xcb_keycode_t, std::less<>> keycodes_;
};

}  // namespace vantrel::soak
