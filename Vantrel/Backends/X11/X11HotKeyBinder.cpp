#include "Vantrel/Backends/X11/X11HotKeyBinder.hpp"

#include <algorithm>
#include <iterator>

#include "Vantrel/Backends/X11/KeymapReader.hpp"
#include "Vantrel/Backends/X11/XkbProtocol.hpp"

namespace vantrel::x11 {

namespace {

void selectKeymapEvents(xcb_connection_t* connection) {
    constexpr std::uint16_t events =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_NAMES_NOTIFY;
    constexpr std::uint16_t parts =
        XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts, nullptr);
}

}  // namespace

X11HotKeyBinder::X11HotKeyBinder(X11Connection& connection, ScreenState& screen)
    : connection_(connection), screen_(screen), heldKeys_(connection) {
    connection_.addListener(*this);
    selectKeymapEvents(connection_.get());
    setDetectableAutoRepeat(connection_.get(), true);
    keymap_ = readKeymap(connection_);
    grabsAreSynchronous_ = keymap_.hidesModifiers();
}

X11HotKeyBinder::~X11HotKeyBinder() = default;

OSStatus X11HotKeyBinder::bind(const backend::KeyCombination& combination) {
    const auto wanted = keymap_.grabsFor(combination.keyCode, combination.modifiers);
    if (!wanted) {
        return eventHotKeyInvalidErr;
    }
    std::vector<KeyGrab> missing;
    std::copy_if(wanted->begin(), wanted->end(), std::back_inserter(missing),
                 [this](const KeyGrab& candidate) { return !grabs_.contains(candidate); });
    std::vector<KeyGrab> granted;
    if (!grab(missing, granted)) {
        for (const KeyGrab& partial : granted) {
            ungrab(partial);
        }
        xcb_flush(connection_.get());
        return eventHotKeyExistsErr;
    }
    bound_.push_back(combination);
    // A key that is down now was pressed for something else, such as recording this very combination.
    heldKeys_.holdAll(keymap_.keysAt(combination.keyCode) & readHeldKeys(connection_));
    return 0;
}

void X11HotKeyBinder::unbind(const backend::KeyCombination& combination) {
    std::erase(bound_, combination);
    releaseUnwantedGrabs();
    xcb_flush(connection_.get());
}

void X11HotKeyBinder::handleEvent(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7FU) {
        case XCB_KEY_PRESS:
            handleKeyPress(reinterpret_cast<const xcb_key_press_event_t&>(event));
            return;
        case XCB_KEY_RELEASE:
            heldKeys_.release(reinterpret_cast<const xcb_key_release_event_t&>(event).detail);
            return;
        default:
            break;
    }
    if (!heldKeys_.handleRawRelease(event) && isKeymapEvent(event) && !keymapTask_.isSet()) {
        keymapTask_ = LoopSource::whenIdle([this] { followKeymap(); });
    }
}

void X11HotKeyBinder::handleKeyPress(const xcb_key_press_event_t& press) {
    const auto combination = combinationOf(press);
    if (grabsAreSynchronous_) {
        // The keyboard waits for the verdict: a press that is not ours goes on to whoever would have had it.
        const auto verdict = combination ? XCB_ALLOW_ASYNC_KEYBOARD : XCB_ALLOW_REPLAY_KEYBOARD;
        xcb_allow_events(connection_.get(), static_cast<std::uint8_t>(verdict), XCB_CURRENT_TIME);
        xcb_flush(connection_.get());
    }
    if (combination && heldKeys_.press(press.detail)) {
        screen_.notePress(press);
        if (pressed_) {
            pressed_(*combination);
        }
    }
}

std::optional<backend::KeyCombination> X11HotKeyBinder::combinationOf(const xcb_key_press_event_t& press) const {
    if (keymap_.hasForeignModifiers(press.state)) {
        return std::nullopt;
    }
    const auto modifiers = keymap_.hidesModifiers() ? keymap_.carbonModifiersOfHeldKeys(readHeldKeys(connection_))
                                                    : keymap_.carbonModifiersIn(press.state);
    const auto found = std::find_if(bound_.begin(), bound_.end(), [&](const backend::KeyCombination& candidate) {
        return modifiers == candidate.modifiers && keymap_.keysAt(candidate.keyCode).test(press.detail);
    });
    return found == bound_.end() ? std::nullopt : std::optional(*found);
}

bool X11HotKeyBinder::isKeymapEvent(const xcb_generic_event_t& event) const {
    const std::uint8_t type = event.response_type & 0x7FU;
    if (type == XCB_MAPPING_NOTIFY) {
        return true;
    }
    // All events of the keyboard extension share one number; the second byte tells them apart.
    return type == connection_.xkbFirstEvent() &&
           (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY ||
            event.pad0 == XCB_XKB_NAMES_NOTIFY);
}

void X11HotKeyBinder::followKeymap() {
    if (connection_.isLost()) {
        return;
    }
    keymap_ = readKeymap(connection_);
    if (grabsAreSynchronous_ != keymap_.hidesModifiers()) {
        grabsAreSynchronous_ = keymap_.hidesModifiers();
        grabs_.clear();
        xcb_ungrab_key(connection_.get(), XCB_GRAB_ANY, connection_.root(), XCB_MOD_MASK_ANY);
        // A press while the map was read may have stopped the keyboard, and its event is not looked at any more as one
        // that did: no key would ever work again.
        xcb_allow_events(connection_.get(), XCB_ALLOW_ASYNC_KEYBOARD, XCB_CURRENT_TIME);
    }
    releaseUnwantedGrabs();
    const std::set<KeyGrab> wanted = wantedGrabs();
    std::vector<KeyGrab> missing;
    std::set_difference(wanted.begin(), wanted.end(), grabs_.begin(), grabs_.end(), std::back_inserter(missing));
    std::vector<KeyGrab> granted;
    grab(missing, granted);
}

std::set<KeyGrab> X11HotKeyBinder::wantedGrabs() const {
    std::set<KeyGrab> wanted;
    for (const backend::KeyCombination& combination : bound_) {
        if (const auto grabs = keymap_.grabsFor(combination.keyCode, combination.modifiers)) {
            wanted.insert(grabs->begin(), grabs->end());
        }
    }
    return wanted;
}

bool X11HotKeyBinder::grab(const std::vector<KeyGrab>& grabs, std::vector<KeyGrab>& granted) {
    const std::uint8_t keyboardMode = grabsAreSynchronous_ ? XCB_GRAB_MODE_SYNC : XCB_GRAB_MODE_ASYNC;
    std::vector<xcb_void_cookie_t> cookies;
    cookies.reserve(grabs.size());
    for (const KeyGrab& grab : grabs) {
        cookies.push_back(xcb_grab_key_checked(connection_.get(), 0, connection_.root(), grab.modifiers, grab.keycode,
                                               XCB_GRAB_MODE_ASYNC, keyboardMode));
    }
    bool allGranted = true;
    for (std::size_t index = 0; index < grabs.size(); ++index) {
        if (const auto error = adopt(xcb_request_check(connection_.get(), cookies[index]))) {
            allGranted = false;
        } else {
            grabs_.insert(grabs[index]);
            granted.push_back(grabs[index]);
        }
    }
    return allGranted;
}

void X11HotKeyBinder::ungrab(const KeyGrab& grab) {
    xcb_ungrab_key(connection_.get(), grab.keycode, connection_.root(), grab.modifiers);
    grabs_.erase(grab);
}

void X11HotKeyBinder::releaseUnwantedGrabs() {
    const std::set<KeyGrab> wanted = wantedGrabs();
    std::vector<KeyGrab> unwanted;
    std::set_difference(grabs_.begin(), grabs_.end(), wanted.begin(), wanted.end(), std::back_inserter(unwanted));
    for (const KeyGrab& grab : unwanted) {
        ungrab(grab);
    }
}

}  // namespace vantrel::x11
