#include "Vantrel/Backends/X11/X11HotKeys.hpp"

#include <algorithm>
#include <iterator>

#include "Vantrel/Backends/X11/KeymapReader.hpp"
#include "Vantrel/Backends/X11/XkbProtocol.h"

namespace vantrel::x11 {

namespace {

constexpr OSStatus noErr = 0;
constexpr OSStatus paramErr = -50;
constexpr OSStatus eventParameterNotFoundErr = -9870;
constexpr OSStatus eventHandlerNotFoundErr = -9876;

/// The four modifiers; a mask may hold further bits (Caps Lock), which are no part of a combination.
constexpr std::uint32_t combinationModifiers = cmdKey | shiftKey | optionKey | controlKey;

}  // namespace

struct X11HotKeys::HotKey {
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    EventHotKeyID identity;
};

struct X11HotKeys::Handler {
    EventHandlerProc callback;
    void* userData;
};

X11HotKeys::X11HotKeys(X11Connection& connection, ScreenState& screen)
    : connection_(connection), screen_(screen), heldKeys_(connection), keymapTask_([this] { followKeymap(); }) {
    connection_.addListener(*this);
    vantrelXkbSelectKeymapEvents(connection_.get());
    const unsigned autoRepeat = vantrelXkbSendDetectableAutoRepeat(connection_.get());
    keymap_ = readKeymap(connection_);
    grabsAreSynchronous_ = keymap_.hidesModifiers();
    vantrelXkbDetectableAutoRepeatReply(connection_.get(), autoRepeat);
}

X11HotKeys::~X11HotKeys() = default;

void X11HotKeys::setContext(GMainContext* context) {
    context_ = context;
    heldKeys_.setContext(context);
}

EventTargetRef X11HotKeys::GetEventDispatcherTarget() {
    return reinterpret_cast<EventTargetRef>(this);
}

OSStatus X11HotKeys::InstallEventHandler(EventTargetRef target, EventHandlerProc handler, EventTypeSpec eventType,
                                         void* userData, EventHandlerRef& handlerRef) {
    if (target != GetEventDispatcherTarget() || handler == nullptr || eventType.eventClass != kEventClassKeyboard ||
        eventType.eventKind != kEventHotKeyPressed) {
        return paramErr;
    }
    handlers_.push_back(std::make_unique<Handler>(Handler{handler, userData}));
    handlerRef = reinterpret_cast<EventHandlerRef>(handlers_.back().get());
    return noErr;
}

OSStatus X11HotKeys::RemoveEventHandler(EventHandlerRef handler) {
    const auto erased = std::erase_if(handlers_, [handler](const std::unique_ptr<Handler>& candidate) {
        return reinterpret_cast<EventHandlerRef>(candidate.get()) == handler;
    });
    return erased > 0 ? noErr : eventHandlerNotFoundErr;
}

OSStatus X11HotKeys::RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID hotKeyID,
                                         EventTargetRef target, std::uint32_t options, EventHotKeyRef& hotKeyRef) {
    hotKeyRef = nullptr;
    if (target != GetEventDispatcherTarget() || options != 0) {
        return paramErr;
    }
    modifiers &= combinationModifiers;
    const bool isTaken =
        std::any_of(hotKeys_.begin(), hotKeys_.end(), [keyCode, modifiers](const std::unique_ptr<HotKey>& hotKey) {
            return hotKey->keyCode == keyCode && hotKey->modifiers == modifiers;
        });
    if (isTaken) {
        return eventHotKeyExistsErr;
    }
    const auto wanted = keymap_.grabsFor(keyCode, modifiers);
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
    hotKeys_.push_back(std::make_unique<HotKey>(HotKey{keyCode, modifiers, hotKeyID}));
    hotKeyRef = reinterpret_cast<EventHotKeyRef>(hotKeys_.back().get());
    // A key that is down now was pressed for something else, such as recording this very combination.
    heldKeys_.holdAll(keymap_.keysAt(keyCode) & readHeldKeys(connection_));
    return noErr;
}

OSStatus X11HotKeys::UnregisterEventHotKey(EventHotKeyRef hotKey) {
    const auto erased = std::erase_if(hotKeys_, [hotKey](const std::unique_ptr<HotKey>& candidate) {
        return reinterpret_cast<EventHotKeyRef>(candidate.get()) == hotKey;
    });
    releaseUnwantedGrabs();
    xcb_flush(connection_.get());
    return erased > 0 ? noErr : paramErr;
}

OSStatus X11HotKeys::GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t type, std::size_t bufferSize,
                                       EventHotKeyID& hotKeyID) {
    if (event == nullptr || bufferSize < sizeof(EventHotKeyID)) {
        return paramErr;
    }
    if (name != kEventParamDirectObject || type != typeEventHotKeyID) {
        return eventParameterNotFoundErr;
    }
    hotKeyID = reinterpret_cast<const HotKey*>(event)->identity;
    return noErr;
}

void X11HotKeys::handleEvent(const xcb_generic_event_t& event) {
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
    if (!heldKeys_.handleRawRelease(event) && isKeymapEvent(event)) {
        keymapTask_.schedule(context_);
    }
}

void X11HotKeys::handleKeyPress(const xcb_key_press_event_t& press) {
    const HotKey* hotKey = hotKeyFor(press);
    if (grabsAreSynchronous_) {
        // The keyboard waits for the verdict: a press that is not ours goes on to whoever would have had it.
        const auto verdict = hotKey != nullptr ? XCB_ALLOW_ASYNC_KEYBOARD : XCB_ALLOW_REPLAY_KEYBOARD;
        xcb_allow_events(connection_.get(), static_cast<std::uint8_t>(verdict), XCB_CURRENT_TIME);
        xcb_flush(connection_.get());
    }
    if (hotKey != nullptr && heldKeys_.press(press.detail)) {
        screen_.notePress(press);
        report(*hotKey);
    }
}

const X11HotKeys::HotKey* X11HotKeys::hotKeyFor(const xcb_key_press_event_t& press) const {
    if (keymap_.hasForeignModifiers(press.state)) {
        return nullptr;
    }
    const auto modifiers = keymap_.hidesModifiers() ? keymap_.carbonModifiersOfHeldKeys(readHeldKeys(connection_))
                                                    : keymap_.carbonModifiersOfState(press.state);
    const auto found = std::find_if(hotKeys_.begin(), hotKeys_.end(), [&](const std::unique_ptr<HotKey>& candidate) {
        return modifiers == candidate->modifiers && keymap_.keysAt(candidate->keyCode).test(press.detail);
    });
    return found == hotKeys_.end() ? nullptr : found->get();
}

void X11HotKeys::report(const HotKey& hotKey) {
    if (handlers_.empty()) {
        return;
    }
    const Handler handler = *handlers_.back();
    handler.callback(nullptr, reinterpret_cast<EventRef>(&hotKey), handler.userData);
}

bool X11HotKeys::isKeymapEvent(const xcb_generic_event_t& event) const {
    const std::uint8_t type = event.response_type & 0x7FU;
    if (type == XCB_MAPPING_NOTIFY) {
        return true;
    }
    // All events of the keyboard extension share one number; the second byte tells them apart.
    return type == connection_.xkbFirstEvent() &&
           (event.pad0 == vantrelXkbNewKeyboardNotify || event.pad0 == vantrelXkbMapNotify ||
            event.pad0 == vantrelXkbNamesNotify);
}

void X11HotKeys::followKeymap() {
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

std::set<KeyGrab> X11HotKeys::wantedGrabs() const {
    std::set<KeyGrab> wanted;
    for (const auto& hotKey : hotKeys_) {
        if (const auto grabs = keymap_.grabsFor(hotKey->keyCode, hotKey->modifiers)) {
            wanted.insert(grabs->begin(), grabs->end());
        }
    }
    return wanted;
}

bool X11HotKeys::grab(const std::vector<KeyGrab>& grabs, std::vector<KeyGrab>& granted) {
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

void X11HotKeys::ungrab(const KeyGrab& grab) {
    xcb_ungrab_key(connection_.get(), grab.keycode, connection_.root(), grab.modifiers);
    grabs_.erase(grab);
}

void X11HotKeys::releaseUnwantedGrabs() {
    const std::set<KeyGrab> wanted = wantedGrabs();
    std::vector<KeyGrab> unwanted;
    std::set_difference(grabs_.begin(), grabs_.end(), wanted.begin(), wanted.end(), std::back_inserter(unwanted));
    for (const KeyGrab& grab : unwanted) {
        ungrab(grab);
    }
}

}  // namespace vantrel::x11
