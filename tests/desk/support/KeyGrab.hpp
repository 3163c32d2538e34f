#pragma once

#include <string_view>
#include <vector>

#include "tests/desk/support/Keyboard.hpp"
#include "tests/desk/support/Wait.hpp"
#include "tests/desk/support/XConnection.hpp"

namespace vantrel::desk {

/// The modifiers of a chord as the server's mask has them on an ordinary keyboard: Option is Alt (Mod1) and Command is
/// Super (Mod4).
std::uint16_t modifierMask(const Chord& chord);

/// A program that holds a chord for itself, as any other program's hot key does.
class KeyGrab {
  public:
    /// Takes the chord, whatever Caps Lock and Num Lock are. Throws when another program holds it.
    KeyGrab(XConnection& connection, const Chord& chord);
    ~KeyGrab();
    KeyGrab(const KeyGrab&) = delete;
    KeyGrab& operator=(const KeyGrab&) = delete;

    /// Waits until the chord's key arrives here; false when it does not before the deadline.
    bool waitForPress(Duration deadline = generousDeadline);

  private:
    XConnection& connection_;
    xcb_keycode_t keycode_;
    std::uint16_t modifiers_;
};

/// Whether some other program holds the chord in all states of Caps Lock and Num Lock. Asks without ever standing in
/// that program's way.
bool isHeldByAnotherProgram(XConnection& connection, const Chord& chord);

}  // namespace vantrel::desk
