#include "Vantrel/Backends/Wayland/HotKeyProtocolBinder.hpp"

#include <algorithm>
#include <utility>

#include "Vantrel/Backends/Wayland/KeyBindings.hpp"

namespace vantrel::wayland {

namespace {

/// Before what the compositor took back is asked for again: the person may take it out of the configuration.
constexpr std::chrono::seconds pauseAfterLoss{5};

std::uint32_t protocolModifiers(std::uint32_t carbonModifiers) {
    std::uint32_t modifiers = 0;
    for (const auto& [carbon, ofProtocol] : {std::pair(shiftKey, XX_HOTKEY_MANAGER_V1_MODIFIERS_SHIFT),
                                             std::pair(controlKey, XX_HOTKEY_MANAGER_V1_MODIFIERS_CTRL),
                                             std::pair(optionKey, XX_HOTKEY_MANAGER_V1_MODIFIERS_ALT),
                                             std::pair(cmdKey, XX_HOTKEY_MANAGER_V1_MODIFIERS_SUPER)}) {
        modifiers |= (carbonModifiers & carbon) != 0 ? static_cast<std::uint32_t>(ofProtocol) : 0;
    }
    return modifiers;
}

/// What stands at the combination's place.
std::vector<xkb_keysym_t> keysymsOf(const backend::KeyCombination& combination, xkb_keymap* keymap) {
    std::vector<xkb_keysym_t> keysyms;
    for (const xkb_keycode_t keycode : keycodesAt(combination.keyCode, keymap)) {
        // Without a symbol the compositor would end the connection.
        if (const xkb_keysym_t keysym = firstKeysymOf(keycode, keymap); keysym != XKB_KEY_NoSymbol) {
            keysyms.push_back(keysym);
        }
    }
    return keysyms;
}

}  // namespace

/// One of the symbols that stand at a hot key's place.
struct HotKeyProtocolBinder::Trigger {
    enum class State { asked, bound, refused };

    HotKeyProtocolBinder* binder = nullptr;
    backend::KeyCombination combination;
    WaylandPointer<xx_hotkey_v1> handle;
    State state = State::asked;
    bool isFinal = false;  ///< whoever asked has had the answer
};

struct HotKeyProtocolBinder::HotKey {
    backend::KeyCombination combination;
    std::vector<xkb_keysym_t> keysyms;
    std::vector<std::unique_ptr<Trigger>> triggers;  ///< none while a shortcut is recorded

    [[nodiscard]] bool has(Trigger::State state) const {
        return std::any_of(triggers.begin(), triggers.end(),
                           [state](const auto& trigger) { return trigger->state == state; });
    }
};

struct HotKeyProtocolBinder::Callbacks {
    static void setState(void* data, Trigger::State state) {
        auto& trigger = *static_cast<Trigger*>(data);
        trigger.state = state;
        if (state == Trigger::State::refused && trigger.isFinal) {
            trigger.binder->noteLoss();
        }
    }
    static void bound(void* data, xx_hotkey_v1* /*handle*/) { setState(data, Trigger::State::bound); }
    static void denied(void* data, xx_hotkey_v1* /*handle*/, std::uint32_t /*reason*/, const char* /*message*/) {
        setState(data, Trigger::State::refused);
    }
    static void revoked(void* data, xx_hotkey_v1* /*handle*/, const char* /*message*/) {
        setState(data, Trigger::State::refused);
    }
    static void triggered(void* data, xx_hotkey_v1* /*handle*/, std::uint32_t /*serial*/, std::uint32_t /*time*/) {
        const auto& trigger = *static_cast<Trigger*>(data);
        trigger.binder->notePress(trigger.combination);
    }
    static void released(void* /*data*/, xx_hotkey_v1* /*handle*/, std::uint32_t /*serial*/, std::uint32_t /*time*/) {}

    static constexpr xx_hotkey_v1_listener listener{
        .bound = bound, .denied = denied, .revoked = revoked, .triggered = triggered, .released = released};
};

bool HotKeyProtocolBinder::isOffered(const Registry& registry) {
    return registry.offers(xx_hotkey_manager_v1_interface, 1);
}

HotKeyProtocolBinder::HotKeyProtocolBinder(WaylandConnection& connection, const Registry& registry, const Seat& seat)
    : connection_(connection),
      manager_(registry.bindFirst<xx_hotkey_manager_v1>(xx_hotkey_manager_v1_interface, 1)),
      keymap_([&connection, &seat](Clock::time_point deadline) { return readSeatKeymap(connection, seat, deadline); }),
      keymapWatch_(registry, [this] { renewal_ = LoopSource::whenIdle([this] { renew(); }); }) {
    xx_hotkey_manager_v1_set_app_id(manager_.get(), "org.vantrel.Vantrel");
}

HotKeyProtocolBinder::~HotKeyProtocolBinder() {
    hotKeys_.clear();
    connection_.flush();
}

void HotKeyProtocolBinder::request(HotKey& hotKey) {
    hotKey.triggers.clear();
    for (const xkb_keysym_t keysym : hotKey.keysyms) {
        auto trigger = std::make_unique<Trigger>();
        trigger->binder = this;
        trigger->combination = hotKey.combination;
        trigger->handle.reset(xx_hotkey_manager_v1_create_hotkey(manager_.get()));
        xx_hotkey_v1* const handle = trigger->handle.get();
        xx_hotkey_v1_add_listener(handle, &Callbacks::listener, trigger.get());
        xx_hotkey_v1_set_description(handle, "Carries the pointer");
        xx_hotkey_v1_set_key_trigger(handle, keysym, protocolModifiers(hotKey.combination.modifiers));
        xx_hotkey_v1_commit(handle);
        hotKey.triggers.push_back(std::move(trigger));
    }
}

OSStatus HotKeyProtocolBinder::bind(const backend::KeyCombination& combination) {
    const Clock::time_point deadline = patience_.deadline();
    xkb_keymap* const keymap = keymap_.get(deadline);
    if (keymap == nullptr) {
        return eventHotKeyInvalidErr;
    }
    auto hotKey = std::make_unique<HotKey>(HotKey{combination, keysymsOf(combination, keymap), {}});
    request(*hotKey);
    connection_.waitFor([&] { return !hotKey->has(Trigger::State::asked); }, deadline);
    if (hotKey->has(Trigger::State::refused)) {
        return eventHotKeyExistsErr;
    }
    if (hotKey->keysyms.empty() || hotKey->has(Trigger::State::asked)) {
        return eventHotKeyInvalidErr;
    }
    for (const auto& trigger : hotKey->triggers) {
        trigger->isFinal = true;
    }
    hotKeys_.push_back(std::move(hotKey));
    return 0;
}

void HotKeyProtocolBinder::unbind(const backend::KeyCombination& combination) {
    std::erase_if(hotKeys_, [&](const auto& hotKey) { return hotKey->combination == combination; });
    connection_.flush();
}

void HotKeyProtocolBinder::setRecording(bool isRecording) {
    isRecording_ = isRecording;
    for (const auto& hotKey : hotKeys_) {
        hotKey->triggers.clear();
    }
    connection_.flush();
    renew();
}

/// Asks for all that is not there, and for what stands at the places now. Nobody waits for the answers.
void HotKeyProtocolBinder::renew() {
    if (isRecording_ || hotKeys_.empty()) {
        return;
    }
    xkb_keymap* const keymap = keymap_.get(Clock::now() + backend::answerTime);
    if (keymap == nullptr) {
        noteLoss();
        return;
    }
    for (const auto& hotKey : hotKeys_) {
        auto keysyms = keysymsOf(hotKey->combination, keymap);
        if (hotKey->triggers.empty() || hotKey->has(Trigger::State::refused) || keysyms != hotKey->keysyms) {
            hotKey->keysyms = std::move(keysyms);
            request(*hotKey);
            for (const auto& trigger : hotKey->triggers) {
                trigger->isFinal = true;
            }
        }
    }
    connection_.flush();
}

void HotKeyProtocolBinder::noteLoss() {
    if (!renewal_.isSet()) {
        renewal_ = LoopSource::after(pauseAfterLoss, [this] { renew(); });
    }
}

void HotKeyProtocolBinder::notePress(const backend::KeyCombination& combination) {
    presses_.push_back(combination);
    delivery_ = LoopSource::after({}, [this] { deliver(); }, {.priority = G_PRIORITY_HIGH});
}

void HotKeyProtocolBinder::deliver() {
    for (const backend::KeyCombination& combination : std::exchange(presses_, {})) {
        pressed_(combination);
    }
}

}  // namespace vantrel::wayland
