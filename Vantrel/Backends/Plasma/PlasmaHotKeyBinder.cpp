#include "Vantrel/Backends/Plasma/PlasmaHotKeyBinder.hpp"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "Vantrel/Backends/Wayland/KeyBindings.hpp"

namespace vantrel::plasma {

namespace {

std::string actionOf(const backend::KeyCombination& combination) {
    return "key-" + std::to_string(combination.keyCode) + "-" + std::to_string(combination.modifiers);
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

std::vector<QtKey> PlasmaHotKeyBinder::keysOf(const backend::KeyCombination& combination, Clock::time_point deadline) {
    xkb_keymap* const keymap = keymap_.get(deadline);
    return keymap == nullptr
               ? std::vector<QtKey>()
               : qtKeysOf(wayland::keycodesAt(combination.keyCode, keymap), combination.modifiers, keymap);
}

OSStatus PlasmaHotKeyBinder::acquire(const BoundKey& key, Clock::time_point deadline) {
    const auto keys = keysOf(key.combination, deadline);
    if (keys.empty()) {
        return eventHotKeyInvalidErr;
    }
    switch (shortcuts_.acquire(key.action, "Hot key", keys, deadline)) {
        case GlobalShortcuts::Outcome::done:
            return 0;
        case GlobalShortcuts::Outcome::taken:
            return eventHotKeyExistsErr;
        case GlobalShortcuts::Outcome::noAnswer:
            break;
    }
    return eventHotKeyInvalidErr;
}

OSStatus PlasmaHotKeyBinder::bind(const backend::KeyCombination& combination) {
    if (!std::exchange(areLeftoversGone_, true)) {
        shortcuts_.releaseLeftovers(Clock::now() + backend::answerTimeAtStart);
    }
    const BoundKey key{.combination = combination, .action = actionOf(combination)};
    const OSStatus status = acquire(key, patience_.deadline());
    if (status == 0) {
        bound_.push_back(key);
    } else if (status == eventHotKeyExistsErr) {
        const auto deadline = Clock::now() + backend::answerTime;
        const std::string owner = shortcuts_.ownerOf(keysOf(combination, deadline), deadline);
        std::fprintf(stderr, "vantrel: the keys of a hot key belong to %s\n",
                     owner.empty() ? "another program" : owner.c_str());
    }
    return status;
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
    for (const BoundKey& key : bound_) {
        static_cast<void>(acquire(key, Clock::now() + backend::answerTime));
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
