#include "tests/desk/support/KeyGrab.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>

namespace vantrel::desk {

namespace {

constexpr std::array<std::uint16_t, 4> lockStates = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                                     XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};

bool tryGrab(XConnection& connection, std::uint16_t modifiers, xcb_keycode_t keycode) {
    const auto cookie = xcb_grab_key_checked(connection.get(), 0, connection.root(), modifiers, keycode,
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const XReply<xcb_generic_error_t> error(xcb_request_check(connection.get(), cookie));
    return error == nullptr;
}

void ungrab(XConnection& connection, std::uint16_t modifiers, xcb_keycode_t keycode) {
    xcb_ungrab_key(connection.get(), keycode, connection.root(), modifiers);
}

}  // namespace

std::uint16_t modifierMask(const Chord& chord) {
    static const std::map<std::string_view, std::uint16_t> masks = {{keys::control, XCB_MOD_MASK_CONTROL},
                                                                    {keys::option, XCB_MOD_MASK_1},
                                                                    {keys::shift, XCB_MOD_MASK_SHIFT},
                                                                    {keys::command, XCB_MOD_MASK_4}};
    unsigned mask = 0;
    for (const auto& name : chord) {
        if (const auto found = masks.find(name); found != masks.end()) {
            mask |= found->second;
        }
    }
    return static_cast<std::uint16_t>(mask);
}

KeyGrab::KeyGrab(XConnection& connection, const Chord& chord)
    : connection_(connection), keycode_(Keyboard(connection).keycode(chord.back())), modifiers_(modifierMask(chord)) {
    for (const auto locks : lockStates) {
        if (!tryGrab(connection_, static_cast<std::uint16_t>(modifiers_ | locks), keycode_)) {
            throw std::runtime_error("another program holds the chord with " + std::string(chord.back()));
        }
    }
}

KeyGrab::~KeyGrab() {
    for (const auto locks : lockStates) {
        ungrab(connection_, static_cast<std::uint16_t>(modifiers_ | locks), keycode_);
    }
    connection_.synchronise();
}

bool KeyGrab::waitForPress(Duration deadline) {
    return waitUntil(
        [&] {
            const XReply<xcb_generic_event_t> event(xcb_poll_for_event(connection_.get()));
            if (!event || (event->response_type & 0x7FU) != XCB_KEY_PRESS) {
                return false;
            }
            return reinterpret_cast<const xcb_key_press_event_t*>(event.get())->detail == keycode_;
        },
        deadline);
}

bool isHeldByAnotherProgram(XConnection& connection, const Chord& chord) {
    const auto keycode = Keyboard(connection).keycode(chord.back());
    const auto modifiers = modifierMask(chord);
    // With the server grabbed, the other program cannot find the chord taken in the moment of asking.
    xcb_grab_server(connection.get());
    const bool isHeld = std::none_of(lockStates.begin(), lockStates.end(), [&](std::uint16_t locks) {
        const auto mask = static_cast<std::uint16_t>(modifiers | locks);
        if (!tryGrab(connection, mask, keycode)) {
            return false;
        }
        ungrab(connection, mask, keycode);
        return true;
    });
    xcb_ungrab_server(connection.get());
    connection.synchronise();
    return isHeld;
}

}  // namespace vantrel::desk
