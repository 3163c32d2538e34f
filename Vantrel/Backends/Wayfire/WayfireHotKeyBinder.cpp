#include "Vantrel/Backends/Wayfire/WayfireHotKeyBinder.hpp"

#include <algorithm>
#include <utility>

#include "Vantrel/Backends/Wayfire/WayfireMessages.hpp"
#include "Vantrel/Backends/Wayland/KeyBindings.hpp"
#include "Vantrel/Handles/FileContents.hpp"

namespace vantrel::wayfire {

namespace {

constexpr xkb_keycode_t firstKeycode = 8;  // XKB's number of the kernel's 0

}  // namespace

WayfireHotKeyBinder::WayfireHotKeyBinder(WayfireSocket& socket, std::filesystem::path configuration,
                                         wayland::ReadKeymap readKeymap)
    : socket_(socket), configuration_(std::move(configuration)), keymap_(std::move(readKeymap)) {
    socket_.setTold([this](const std::string& event) { obey(event); });
}

WayfireHotKeyBinder::~WayfireHotKeyBinder() {
    socket_.setTold(nullptr);
    for (const BoundKey& key : bound_) {
        release(key);
    }
}

std::vector<Chord> WayfireHotKeyBinder::chordsOf(const backend::KeyCombination& combination,
                                                 Clock::time_point deadline) {
    std::vector<Chord> chords;
    xkb_keymap* const keymap = keymap_.get(deadline);
    if (keymap == nullptr) {
        return chords;
    }
    for (const xkb_keycode_t keycode : wayland::keycodesAt(combination.keyCode, keymap)) {
        if (auto name = keyName(keycode - firstKeycode)) {
            chords.push_back({.modifiers = combination.modifiers, .key = std::move(*name)});
        }
    }
    return chords;
}

bool WayfireHotKeyBinder::isConfigured(const std::vector<Chord>& chords) const {
    const std::vector<Chord> configured = chordsInConfiguration(contentsOf(configuration_).value_or(""));
    return std::find_first_of(configured.begin(), configured.end(), chords.begin(), chords.end()) != configured.end();
}

OSStatus WayfireHotKeyBinder::bind(const backend::KeyCombination& combination) {
    const Clock::time_point deadline = patience_.deadline();
    const std::vector<Chord> chords = chordsOf(combination, deadline);
    if (isConfigured(chords)) {
        return eventHotKeyExistsErr;
    }
    BoundKey key{combination, {}};
    for (const Chord& chord : chords) {
        const auto answer = socket_.call(bindCall(textOf(chord)), deadline);
        const auto binding = answer ? bindingIn(*answer) : std::nullopt;
        if (!binding) {
            release(key);
            return eventHotKeyInvalidErr;
        }
        key.bindings.push_back(*binding);
    }
    if (key.bindings.empty()) {
        return eventHotKeyInvalidErr;
    }
    bound_.push_back(std::move(key));
    return 0;
}

void WayfireHotKeyBinder::unbind(const backend::KeyCombination& combination) {
    const auto key = std::find_if(bound_.begin(), bound_.end(),
                                  [&](const BoundKey& candidate) { return candidate.combination == combination; });
    if (key != bound_.end()) {
        release(*key);
        bound_.erase(key);
    }
}

void WayfireHotKeyBinder::release(const BoundKey& key) {
    for (const std::uint64_t binding : key.bindings) {
        static_cast<void>(socket_.call(unbindCall(binding), Clock::now() + backend::answerTime));
    }
}

void WayfireHotKeyBinder::obey(const std::string& event) {
    const auto pressed = pressedIn(event);
    const auto key = std::find_if(bound_.begin(), bound_.end(), [&](const BoundKey& candidate) {
        return pressed &&
               std::find(candidate.bindings.begin(), candidate.bindings.end(), *pressed) != candidate.bindings.end();
    });
    if (key != bound_.end() && pressed_) {
        pressed_(backend::KeyCombination(key->combination));
    }
}

}  // namespace vantrel::wayfire
