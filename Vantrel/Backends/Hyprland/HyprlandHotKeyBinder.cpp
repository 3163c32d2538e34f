#include "Vantrel/Backends/Hyprland/HyprlandHotKeyBinder.hpp"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace vantrel::hyprland {

namespace {

constexpr std::chrono::seconds pauseBeforeListening{1};
constexpr std::size_t longestLine = std::size_t{1024} * 1024;

}  // namespace

HyprlandHotKeyBinder::HyprlandHotKeyBinder(HyprlandSocket& commands, Language language, std::filesystem::path eventFile,
                                           wayland::ReadKeymap readKeymap)
    : commands_(commands), language_(language), eventFile_(std::move(eventFile)), keymap_(std::move(readKeymap)) {
    listen();
}

HyprlandHotKeyBinder::~HyprlandHotKeyBinder() {
    for (const BoundKey& key : bound_) {
        unbindKey(key, Clock::now() + backend::answerTime);
    }
}

void HyprlandHotKeyBinder::listen() {
    received_.clear();
    events_ = connectToSocket(eventFile_, SOCK_NONBLOCK);
    listening_ = events_.isOpen()
                     ? LoopSource::whenReadable(events_.get(), [this] { receive(); }, {.priority = G_PRIORITY_HIGH})
                     : LoopSource::after(pauseBeforeListening, [this] { listen(); });
}

void HyprlandHotKeyBinder::receive() {
    std::array<char, std::size_t{16} * 1024> buffer;
    const ssize_t count = recv(events_.get(), buffer.data(), buffer.size(), 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    if (count <= 0 || received_.size() > longestLine) {
        // The end of Hyprland itself is told by the display.
        listening_ = LoopSource::after(pauseBeforeListening, [this] { listen(); });
        return;
    }
    received_.append(buffer.data(), static_cast<std::size_t>(count));
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = received_.find('\n', begin)) != std::string::npos; begin = end + 1) {
        obey(std::string_view(received_).substr(begin, end - begin));
    }
    received_.erase(0, begin);
}

void HyprlandHotKeyBinder::obey(std::string_view event) {
    if (event.starts_with(reloadEvent)) {
        restoring_ = LoopSource::whenIdle([this] { restore(); });
        return;
    }
    const auto pressed = pressedIn(event);
    const bool isBound = pressed && std::any_of(bound_.begin(), bound_.end(),
                                                [&](const BoundKey& key) { return key.combination == *pressed; });
    if (isBound && pressed_) {
        pressed_(*pressed);
    }
}

OSStatus HyprlandHotKeyBinder::bind(const backend::KeyCombination& combination) {
    const Clock::time_point deadline = patience_.deadline();
    xkb_keymap* const keymap = keymap_.get(deadline);
    if (keymap == nullptr) {
        return eventHotKeyInvalidErr;
    }
    BoundKey key{combination, wayland::keycodesAt(combination.keyCode, keymap)};
    if (key.keycodes.empty()) {
        return eventHotKeyInvalidErr;
    }
    const OSStatus status = bindKey(key, keymap, deadline);
    if (status == 0) {
        bound_.push_back(std::move(key));
    }
    return status;
}

OSStatus HyprlandHotKeyBinder::bindKey(const BoundKey& key, xkb_keymap* keymap, Clock::time_point deadline) {
    if (language_ == Language::lua) {
        // What a killed agent has left behind.
        unbindKey(key, deadline);
    }
    const auto answer = commands_.ask(bindingsQuestion, deadline);
    if (!answer) {
        return eventHotKeyInvalidErr;
    }
    const Bindings bindings = bindingsIn(*answer);
    const std::uint32_t modifiers = wayland::realModifiers(key.combination.modifiers);
    const bool isConfigured =
        std::any_of(bindings.configured.begin(), bindings.configured.end(), [&](const auto& binding) {
            return binding.mode.empty() &&
                   std::any_of(key.keycodes.begin(), key.keycodes.end(),
                               [&](xkb_keycode_t keycode) { return isMeantBy(binding, modifiers, keycode, keymap); });
        });
    if (isConfigured) {
        return eventHotKeyExistsErr;
    }
    if (std::find(bindings.ours.begin(), bindings.ours.end(), key.combination) != bindings.ours.end()) {
        return 0;
    }
    const bool isDone = std::all_of(key.keycodes.begin(), key.keycodes.end(), [&](xkb_keycode_t keycode) {
        return commands_.ask(bindCommand(language_, key.combination, keycode), deadline) == agreement;
    });
    if (!isDone) {
        unbindKey(key, deadline);
    }
    return isDone ? 0 : eventHotKeyInvalidErr;
}

void HyprlandHotKeyBinder::unbind(const backend::KeyCombination& combination) {
    const auto key = std::find_if(bound_.begin(), bound_.end(),
                                  [&](const BoundKey& candidate) { return candidate.combination == combination; });
    if (key != bound_.end()) {
        unbindKey(*key, Clock::now() + backend::answerTime);
        bound_.erase(key);
    }
}

void HyprlandHotKeyBinder::unbindKey(const BoundKey& key, Clock::time_point deadline) {
    for (const xkb_keycode_t keycode : key.keycodes) {
        static_cast<void>(commands_.ask(unbindCommand(language_, key.combination, keycode), deadline));
    }
}

/// After the configuration was read anew, which may bind our keys to something else now.
void HyprlandHotKeyBinder::restore() {
    const Clock::time_point deadline = Clock::now() + backend::answerTime;
    xkb_keymap* const keymap = keymap_.get(deadline);
    const bool isDone = keymap != nullptr && std::all_of(bound_.begin(), bound_.end(), [&](const BoundKey& key) {
                            return bindKey(key, keymap, deadline) != eventHotKeyInvalidErr;
                        });
    if (!isDone) {
        restoring_ = LoopSource::after(pauseBeforeListening, [this] { restore(); });
    }
}

}  // namespace vantrel::hyprland
