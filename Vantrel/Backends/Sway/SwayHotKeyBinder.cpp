#include "Vantrel/Backends/Sway/SwayHotKeyBinder.hpp"

#include <algorithm>
#include <utility>

#include "Vantrel/Backends/Sway/SwayConfiguration.hpp"
#include "Vantrel/Backends/Sway/SwayReplies.hpp"

namespace vantrel::sway {

namespace {

constexpr std::chrono::seconds pauseBeforeListening{1};
constexpr std::chrono::milliseconds pauseBeforeRestoring{50};
constexpr auto wantedEvents = R"(["binding","mode","workspace"])";

/// What the binding runs. It says of which combination it is, so that what a killed agent has left behind means what it
/// says.
std::string commandOf(const backend::KeyCombination& combination) {
    return "nop vantrel " + std::to_string(combination.keyCode) + " " + std::to_string(combination.modifiers);
}

/// "Ctrl+Mod1+40".
std::string chordText(std::uint32_t modifiers, xkb_keycode_t keycode) {
    std::string text;
    text += (modifiers & wayland::controlModifier) != 0 ? "Ctrl+" : "";
    text += (modifiers & wayland::altModifier) != 0 ? "Mod1+" : "";
    text += (modifiers & wayland::shiftModifier) != 0 ? "Shift+" : "";
    text += (modifiers & wayland::logoModifier) != 0 ? "Mod4+" : "";
    return text + std::to_string(keycode);
}

/// The chords that together mean those keys. A modifier key that has switched the layout instead is for sway a key like
/// any other, and counts as held with the one that was pressed.
std::vector<std::string> chordTexts(std::uint32_t modifiers, const std::vector<xkb_keycode_t>& keycodes,
                                    xkb_keymap* keymap) {
    std::vector<std::string> chords;
    const auto hiding = wayland::hidingKeys(keymap);
    for (const xkb_keycode_t keycode : keycodes) {
        chords.push_back(chordText(modifiers, keycode));
        for (const wayland::HidingKey& key : hiding) {
            if ((modifiers & key.modifier) != 0) {
                chords.push_back(chordText(modifiers & ~key.modifier, key.keycode) + "+" + std::to_string(keycode));
            }
        }
    }
    return chords;
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') {
            result += '\\';
        }
        result += character;
    }
    return result + "\"";
}

}  // namespace

SwayHotKeyBinder::SwayHotKeyBinder(SwayIpc& commands, const std::filesystem::path& socketFile,
                                   wayland::ReadKeymap readKeymap)
    : commands_(commands), events_(socketFile), keymap_(std::move(readKeymap)) {
    listen();
    const Clock::time_point deadline = Clock::now() + backend::answerTimeAtStart;
    keymap_.get(deadline);
    learn(deadline);
}

SwayHotKeyBinder::~SwayHotKeyBinder() {
    const Clock::time_point deadline = Clock::now() + backend::answerTime;
    for (const BoundKey& key : bound_) {
        unbindInModes(key, deadline);
    }
}

void SwayHotKeyBinder::listen() {
    if (!events_.open() || !events_.tell(MessageType::subscribe, wantedEvents)) {
        listening_ = LoopSource::after(pauseBeforeListening, [this] { listen(); });
        return;
    }
    listening_ = LoopSource::whenReadable(events_.descriptor(), [this] { receive(); }, {.priority = G_PRIORITY_HIGH});
}

void SwayHotKeyBinder::receive() {
    const std::vector<Message> messages = events_.take();
    if (!events_.isOpen()) {
        // Sway hangs up on who does not read for long. Its end is told by the display.
        listening_ = LoopSource::after(pauseBeforeListening, [this] { listen(); });
    }
    for (const Message& message : messages) {
        obey(message);
    }
}

void SwayHotKeyBinder::obey(const Message& event) {
    switch (event.type) {
        case MessageType::bindingEvent:
            if (const auto command = pressedCommandIn(event.payload)) {
                const auto key = std::find_if(bound_.begin(), bound_.end(), [&](const BoundKey& candidate) {
                    return commandOf(candidate.combination) == *command;
                });
                if (key != bound_.end() && pressed_) {
                    pressed_(key->combination);
                }
            }
            break;
        case MessageType::modeEvent:
            restoreInMode(changeIn(event.payload));
            break;
        case MessageType::workspaceEvent:
            if (changeIn(event.payload) == "reload") {
                modes_.clear();
                for (BoundKey& key : bound_) {
                    key.isLost = true;
                }
                restore();
            }
            break;
        default:
            break;
    }
}

bool SwayHotKeyBinder::learn(Clock::time_point deadline) {
    if (!modes_.empty()) {
        return true;
    }
    const auto modes = commands_.ask(MessageType::getBindingModes, "", deadline);
    const auto configuration = commands_.ask(MessageType::getConfig, "", deadline);
    const auto version = commands_.ask(MessageType::getVersion, "", deadline);
    if (!modes || !configuration || !version) {
        return false;
    }
    configured_ = bindingsInConfiguration(configurationIn(*configuration), configurationFileIn(*version));
    modes_ = modesIn(*modes);
    return !modes_.empty();
}

bool SwayHotKeyBinder::isConfigured(const BoundKey& key, xkb_keymap* keymap) const {
    return std::any_of(configured_.begin(), configured_.end(), [&](const wayland::ConfiguredBinding& binding) {
        return std::any_of(key.keycodes.begin(), key.keycodes.end(), [&](xkb_keycode_t keycode) {
            return wayland::isMeantBy(binding, key.modifiers, keycode, keymap);
        });
    });
}

OSStatus SwayHotKeyBinder::bind(const backend::KeyCombination& combination) {
    const Clock::time_point deadline = patience_.deadline();
    xkb_keymap* const keymap = keymap_.get(deadline);
    if (keymap == nullptr || !learn(deadline)) {
        return eventHotKeyInvalidErr;
    }
    BoundKey key{.combination = combination,
                 .modifiers = wayland::realModifiers(combination.modifiers),
                 .keycodes = wayland::keycodesAt(combination.keyCode, keymap),
                 .chords = {}};
    if (key.keycodes.empty()) {
        return eventHotKeyInvalidErr;
    }
    if (isConfigured(key, keymap)) {
        return eventHotKeyExistsErr;
    }
    key.chords = chordTexts(key.modifiers, key.keycodes, keymap);
    if (!bindInModes(key, modes_, deadline)) {
        unbindInModes(key, deadline);
        return eventHotKeyInvalidErr;
    }
    bound_.push_back(std::move(key));
    return 0;
}

bool SwayHotKeyBinder::bindInModes(const BoundKey& key, const std::vector<std::string>& modes,
                                   Clock::time_point deadline) {
    std::string commands;
    for (const std::string& mode : modes) {
        for (const std::string& chord : key.chords) {
            commands += "mode " + quoted(mode) + " bindcode --no-repeat --no-warn " + chord + " " +
                        commandOf(key.combination) + ";";
        }
    }
    const auto reply = commands_.ask(MessageType::runCommand, commands, deadline);
    return reply && allSucceeded(*reply);
}

void SwayHotKeyBinder::unbind(const backend::KeyCombination& combination) {
    const auto key = std::find_if(bound_.begin(), bound_.end(),
                                  [&](const BoundKey& candidate) { return candidate.combination == combination; });
    if (key != bound_.end()) {
        unbindInModes(*key, Clock::now() + backend::answerTime);
        bound_.erase(key);
    }
}

void SwayHotKeyBinder::unbindInModes(const BoundKey& key, Clock::time_point deadline) {
    std::string commands;
    for (const std::string& mode : modes_) {
        for (const std::string& chord : key.chords) {
            commands += "mode " + quoted(mode) + " unbindcode " + chord + ";";
        }
    }
    // The answer is waited for, because sway drops what it has not read of a connection that is closed.
    commands_.ask(MessageType::runCommand, commands, deadline);
}

void SwayHotKeyBinder::restore() {
    const Clock::time_point deadline = Clock::now() + backend::answerTime;
    xkb_keymap* const keymap = keymap_.get(deadline);
    bool isDone = keymap != nullptr && learn(deadline);
    for (BoundKey& key : bound_) {
        if (isDone && key.isLost) {
            // The person may have just given the keys to something else, or chosen another keyboard's options.
            key.chords = chordTexts(key.modifiers, key.keycodes, keymap);
            isDone = isConfigured(key, keymap) || bindInModes(key, modes_, deadline);
            key.isLost = !isDone;
        }
    }
    if (!isDone) {
        // Sway is busy with what else a reload sets off.
        restoreAgain_ = LoopSource::after(pauseBeforeRestoring, [this] { restore(); });
    }
}

void SwayHotKeyBinder::restoreInMode(const std::string& mode) {
    if (modes_.empty() || std::find(modes_.begin(), modes_.end(), mode) != modes_.end()) {
        return;
    }
    // A mode that was made while sway runs.
    modes_.push_back(mode);
    for (BoundKey& key : bound_) {
        if (!bindInModes(key, {mode}, Clock::now() + backend::answerTime)) {
            key.isLost = true;
            restoreAgain_ = LoopSource::after(pauseBeforeRestoring, [this] { restore(); });
        }
    }
}

}  // namespace vantrel::sway
