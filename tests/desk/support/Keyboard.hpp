#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/desk/support/XConnection.hpp"

namespace vantrel::desk {

/// The names that XKB gives to places on the keyboard, as far as the tests press them.
namespace keys {
inline constexpr std::string_view control = "LCTL";
inline constexpr std::string_view option = "LALT";
inline constexpr std::string_view shift = "LFSH";
inline constexpr std::string_view command = "LWIN";
inline constexpr std::string_view capsLock = "CAPS";
inline constexpr std::string_view numLock = "NMLK";
inline constexpr std::string_view d = "AC03";
inline constexpr std::string_view s = "AC02";
inline constexpr std::string_view m = "AB07";
inline constexpr std::string_view q = "AD01";
inline constexpr std::string_view leftArrow = "LEFT";
inline constexpr std::string_view rightArrow = "RGHT";
inline constexpr std::string_view down = "DOWN";
inline constexpr std::string_view end = "END";
inline constexpr std::string_view enter = "RTRN";
inline constexpr std::string_view escape = "ESC";
inline constexpr std::string_view space = "SPCE";
inline constexpr std::string_view tab = "TAB";
}  // namespace keys

/// Keys in the order in which they go down.
using Chord = std::vector<std::string_view>;

/// Hyper and the key.
Chord hyper(std::string_view key);
/// Control, Option, Command and the key.
Chord controlOptionCommand(std::string_view key);

/// A person's hands on the keyboard of a private X server (XTEST).
class Keyboard {
  public:
    explicit Keyboard(XConnection& connection) : connection_(connection) {}
    /// Lets go of what a failed test left held.
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    /// The keycode that the server's present keymap has at the place. Throws when it has none.
    [[nodiscard]] xcb_keycode_t keycode(std::string_view name);

    void press(std::string_view name);
    /// Throws when the key is not held.
    void release(std::string_view name);

    /// Presses the keys in order and lets go of them in reverse order.
    void type(const Chord& chord);

    /// Presses the keys in order and keeps them down until letGo().
    void hold(const Chord& chord);

    /// Lets go of every held key, the last pressed first.
    void letGo();

  private:
    struct HeldKey {
        std::string name;
        xcb_keycode_t keycode;  ///< kept, because the map may change while the key is down
    };

    void send(std::uint8_t type, xcb_keycode_t keycode);

    XConnection& connection_;
    std::vector<HeldKey> held_;
};

/// Gives the server's keyboard a map as `setxkbmap -rules evdev -model pc105 -layout LAYOUT [-option OPTION]` does on a
/// desktop; an empty option clears the options.
void setKeyboardMap(const std::string& displayName, const std::string& layout, const std::string& option = {});

}  // namespace vantrel::desk
