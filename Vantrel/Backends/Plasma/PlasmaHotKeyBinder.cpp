#include "Vantrel/Backends/Plasma/PlasmaHotKeyBinder.hpp"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "Vantrel/Backends/Wayland/KeyBindings.hpp"

namespace vantrel::plasma {

namespace {

/// Before what got no answer is asked for again.
constexpr std::chrono::seconds pauseBeforeRestoring{1};

std::string actionOf(const backend::KeyCombination& combination) {
    return "key-" + std::to_string(combination.keyCode) + "-" + std::to_string(combination.modifiers);
}

std::vector<QtKey> keysOf(const backend::KeyCombination& combination, xkb_keymap* keymap) {
    return qtKeysOf(wayland::keycodesAt(combination.keyCode, keymap), combination.modifiers, keymap);
}

}  // namespace

PlasmaHotKeyBinder::PlasmaHotKeyBinder(GObjectPointer<GDBusConnection> bus, const wayland::Registry& registry,
                                       wayland::ReadKeymap readKeymap)
    : keymap_(std::move(readKeymap)),
      shortcuts_(std::move(bus), {.pressed = [this](const std::string& action) { press(action); },
                                  .released =
                                      [this](const std::string& action) {
                                          if (BoundKey* const key = find(action)) {
                                              key->isHeld = false;
                                          }
                                      },
                                  .replaced =
                                      [this] {
                                          // Of keys that were held nobody will tell that they were let go of.
                                          for (BoundKey& key : bound_) {
                                              key.isHeld = false;
                                          }
                                          restore();
                                      }}),
      layouts_(registry, [this] { restoring_ = LoopSource::whenIdle([this] { restore(); }); }) {}

/// None for a place that types nothing.
std::optional<GlobalShortcuts::Outcome> PlasmaHotKeyBinder::acquire(const BoundKey& key, Clock::time_point deadline) {
    xkb_keymap* const keymap = keymap_.get(deadline);
    if (keymap == nullptr) {
        return GlobalShortcuts::Outcome::noAnswer;
    }
    const auto keys = keysOf(key.combination, keymap);
    return keys.empty() ? std::nullopt : std::optional(shortcuts_.acquire(key.action, "Hot key", keys, deadline));
}

OSStatus PlasmaHotKeyBinder::bind(const backend::KeyCombination& combination) {
    if (!std::exchange(areLeftoversGone_, true)) {
        shortcuts_.releaseLeftovers(Clock::now() + backend::answerTimeAtStart);
    }
    const BoundKey key{.combination = combination, .action = actionOf(combination)};
    const auto outcome = acquire(key, patience_.deadline());
    if (outcome == GlobalShortcuts::Outcome::done) {
        bound_.push_back(key);
        return 0;
    }
    if (outcome != GlobalShortcuts::Outcome::taken) {
        return eventHotKeyInvalidErr;
    }
    const auto deadline = Clock::now() + backend::answerTime;
    xkb_keymap* const keymap = keymap_.get(deadline);
    const std::string owner =
        keymap == nullptr ? std::string() : shortcuts_.ownerOf(keysOf(combination, keymap), deadline);
    std::fprintf(stderr, "vantrel: the keys of a hot key belong to %s\n",
                 owner.empty() ? "another program" : owner.c_str());
    return eventHotKeyExistsErr;
}

void PlasmaHotKeyBinder::unbind(const backend::KeyCombination& combination) {
    const auto key = std::find_if(bound_.begin(), bound_.end(),
                                  [&](const BoundKey& candidate) { return candidate.combination == combination; });
    if (key != bound_.end()) {
        shortcuts_.release(key->action, Clock::now() + backend::answerTime);
        bound_.erase(key);
    }
}

/// A global shortcut's keys do not reach the window that records: they are let go of meanwhile.
void PlasmaHotKeyBinder::setRecording(bool isRecording) {
    isRecording_ = isRecording;
    if (!isRecording) {
        restore();
        return;
    }
    for (BoundKey& key : bound_) {
        shortcuts_.release(key.action, Clock::now() + backend::answerTime);
        key.isHeld = false;
    }
}

/// The service is a new one, or a key types something else now.
void PlasmaHotKeyBinder::restore() {
    if (isRecording_) {
        return;
    }
    bool isAnswered = true;
    for (const BoundKey& key : bound_) {
        const auto outcome = acquire(key, Clock::now() + backend::answerTime);
        isAnswered = isAnswered && outcome != GlobalShortcuts::Outcome::noAnswer;
    }
    if (!isAnswered) {
        // KWin is busy, as with what else the end of a recording sets off.
        restoring_ = LoopSource::after(pauseBeforeRestoring, [this] { restore(); });
    }
}

void PlasmaHotKeyBinder::press(const std::string& action) {
    BoundKey* const key = find(action);
    if (key != nullptr && !std::exchange(key->isHeld, true) && pressed_) {
        pressed_(backend::KeyCombination(key->combination));
    }
}

PlasmaHotKeyBinder::BoundKey* PlasmaHotKeyBinder::find(const std::string& action) {
    const auto key = std::find_if(bound_.begin(), bound_.end(),
                                  [&](const BoundKey& candidate) { return candidate.action == action; });
    return key == bound_.end() ? nullptr : &*key;
}

}  // namespace vantrel::plasma
