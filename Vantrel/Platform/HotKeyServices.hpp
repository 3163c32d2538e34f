#pragma once

#include <cstddef>
#include <cstdint>

namespace vantrel {

using OSStatus = std::int32_t;  ///< 0 is success

/// Another program, or this one, already holds the combination.
inline constexpr OSStatus eventHotKeyExistsErr = -9878;
/// The keyboard has no such key or modifier, or the mask holds none of the four modifiers.
inline constexpr OSStatus eventHotKeyInvalidErr = -9879;

// Carbon's bits of a modifier mask.
inline constexpr std::uint32_t cmdKey = 0x100;
inline constexpr std::uint32_t shiftKey = 0x200;
inline constexpr std::uint32_t optionKey = 0x800;
inline constexpr std::uint32_t controlKey = 0x1000;
/// A mask may hold further bits (Caps Lock), which are no part of a combination.
inline constexpr std::uint32_t combinationModifiers = cmdKey | shiftKey | optionKey | controlKey;

/// The four bytes of the text as one number, the first in the most significant byte.
constexpr std::uint32_t fourCharCode(const char (&text)[5]) {
    std::uint32_t code = 0;
    for (std::size_t index = 0; index < 4; ++index) {
        code = (code << 8U) + static_cast<unsigned char>(text[index]);
    }
    return code;
}

inline constexpr std::uint32_t kEventClassKeyboard = fourCharCode("keyb");
inline constexpr std::uint32_t kEventHotKeyPressed = 5;
inline constexpr std::uint32_t kEventParamDirectObject = fourCharCode("----");
inline constexpr std::uint32_t typeEventHotKeyID = fourCharCode("hkid");

/// Names the registration that a press belongs to.
struct EventHotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;

    bool operator==(const EventHotKeyID&) const = default;
};
static_assert(sizeof(EventHotKeyID) == 8);

struct EventTypeSpec {
    std::uint32_t eventClass = 0;
    std::uint32_t eventKind = 0;
};

struct OpaqueEventTarget;
struct OpaqueEventHandler;
struct OpaqueEventHandlerCall;
struct OpaqueHotKey;
struct OpaqueEvent;
using EventTargetRef = OpaqueEventTarget*;
using EventHandlerRef = OpaqueEventHandler*;          ///< empty when null
using EventHandlerCallRef = OpaqueEventHandlerCall*;  ///< always null here; part of the callback's form
using EventHotKeyRef = OpaqueHotKey*;                 ///< empty when null
using EventRef = const OpaqueEvent*;                  ///< valid during the callback only

/// Called on the main thread for each press. Returns 0 or the status that kept it from reading the event.
using EventHandlerProc = OSStatus (*)(EventHandlerCallRef call, EventRef event, void* userData);

/// System-wide hot keys. Key codes are macOS virtual key codes, which name places on the keyboard, not letters;
/// modifier masks are Carbon's. A press is reported once, however long the key is held, and whatever Caps Lock, Num
/// Lock or the keyboard layout are. Registrations survive layout and keyboard changes without the caller noticing.
class HotKeyServices {
  public:
    virtual ~HotKeyServices() = default;

    virtual EventTargetRef GetEventDispatcherTarget() = 0;

    /// Installs the callback for the one event type {kEventClassKeyboard, kEventHotKeyPressed}. `userData` is handed to
    /// every call and is not retained. Returns 0 on success.
    virtual OSStatus InstallEventHandler(EventTargetRef target, EventHandlerProc handler, EventTypeSpec eventType,
                                         void* userData, EventHandlerRef& handlerRef) = 0;

    virtual OSStatus RemoveEventHandler(EventHandlerRef handler) = 0;

    /// Registers the combination, of whose mask only the four modifiers count, and at least one must be there: a key
    /// alone would be taken from every other program. Returns 0 with a reference, or eventHotKeyExistsErr, or
    /// eventHotKeyInvalidErr; a refused registration leaves nothing behind. `options` is always 0.
    virtual OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID hotKeyID,
                                         EventTargetRef target, std::uint32_t options, EventHotKeyRef& hotKeyRef) = 0;

    virtual OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) = 0;

    /// Reads the pressed hot key's identity (kEventParamDirectObject as typeEventHotKeyID, `bufferSize` 8 bytes).
    virtual OSStatus GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t type, std::size_t bufferSize,
                                       EventHotKeyID& hotKeyID) = 0;
};

}  // namespace vantrel
