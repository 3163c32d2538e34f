#include "Vantrel/Backends/Wayfire/WayfireChord.hpp"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>

#include "Vantrel/Handles/TextPieces.hpp"
#include "Vantrel/Platform/HotKeyServices.hpp"

namespace vantrel::wayfire {

namespace {

struct Modifier {
    std::uint32_t carbon;
    std::string_view text;
};

constexpr std::array modifiers{Modifier{controlKey, "<ctrl>"}, Modifier{optionKey, "<alt>"},
                               Modifier{shiftKey, "<shift>"}, Modifier{cmdKey, "<super>"}};

struct Key {
    std::uint32_t code;
    std::string_view name;
};

#define VANTREL_KEY(name)        \
    Key {                        \
        KEY_##name, "KEY_" #name \
    }
constexpr std::array keys{
    VANTREL_KEY(A),          VANTREL_KEY(B),          VANTREL_KEY(C),          VANTREL_KEY(D),
    VANTREL_KEY(E),          VANTREL_KEY(F),          VANTREL_KEY(G),          VANTREL_KEY(H),
    VANTREL_KEY(I),          VANTREL_KEY(J),          VANTREL_KEY(K),          VANTREL_KEY(L),
    VANTREL_KEY(M),          VANTREL_KEY(N),          VANTREL_KEY(O),          VANTREL_KEY(P),
    VANTREL_KEY(Q),          VANTREL_KEY(R),          VANTREL_KEY(S),          VANTREL_KEY(T),
    VANTREL_KEY(U),          VANTREL_KEY(V),          VANTREL_KEY(W),          VANTREL_KEY(X),
    VANTREL_KEY(Y),          VANTREL_KEY(Z),          VANTREL_KEY(0),          VANTREL_KEY(1),
    VANTREL_KEY(2),          VANTREL_KEY(3),          VANTREL_KEY(4),          VANTREL_KEY(5),
    VANTREL_KEY(6),          VANTREL_KEY(7),          VANTREL_KEY(8),          VANTREL_KEY(9),
    VANTREL_KEY(F1),         VANTREL_KEY(F2),         VANTREL_KEY(F3),         VANTREL_KEY(F4),
    VANTREL_KEY(F5),         VANTREL_KEY(F6),         VANTREL_KEY(F7),         VANTREL_KEY(F8),
    VANTREL_KEY(F9),         VANTREL_KEY(F10),        VANTREL_KEY(F11),        VANTREL_KEY(F12),
    VANTREL_KEY(F13),        VANTREL_KEY(F14),        VANTREL_KEY(F15),        VANTREL_KEY(F16),
    VANTREL_KEY(F17),        VANTREL_KEY(F18),        VANTREL_KEY(F19),        VANTREL_KEY(F20),
    VANTREL_KEY(KP0),        VANTREL_KEY(KP1),        VANTREL_KEY(KP2),        VANTREL_KEY(KP3),
    VANTREL_KEY(KP4),        VANTREL_KEY(KP5),        VANTREL_KEY(KP6),        VANTREL_KEY(KP7),
    VANTREL_KEY(KP8),        VANTREL_KEY(KP9),        VANTREL_KEY(KPDOT),      VANTREL_KEY(KPASTERISK),
    VANTREL_KEY(KPPLUS),     VANTREL_KEY(KPMINUS),    VANTREL_KEY(KPSLASH),    VANTREL_KEY(KPENTER),
    VANTREL_KEY(KPEQUAL),    VANTREL_KEY(NUMLOCK),    VANTREL_KEY(MINUS),      VANTREL_KEY(EQUAL),
    VANTREL_KEY(LEFTBRACE),  VANTREL_KEY(RIGHTBRACE), VANTREL_KEY(ENTER),      VANTREL_KEY(SEMICOLON),
    VANTREL_KEY(APOSTROPHE), VANTREL_KEY(GRAVE),      VANTREL_KEY(BACKSLASH),  VANTREL_KEY(COMMA),
    VANTREL_KEY(DOT),        VANTREL_KEY(SLASH),      VANTREL_KEY(102ND),      VANTREL_KEY(SPACE),
    VANTREL_KEY(TAB),        VANTREL_KEY(BACKSPACE),  VANTREL_KEY(ESC),        VANTREL_KEY(YEN),
    VANTREL_KEY(RO),         VANTREL_KEY(SYSRQ),      VANTREL_KEY(SCROLLLOCK), VANTREL_KEY(PAUSE),
    VANTREL_KEY(COMPOSE),    VANTREL_KEY(MENU),       VANTREL_KEY(INSERT),     VANTREL_KEY(HOME),
    VANTREL_KEY(PAGEUP),     VANTREL_KEY(DELETE),     VANTREL_KEY(END),        VANTREL_KEY(PAGEDOWN),
    VANTREL_KEY(LEFT),       VANTREL_KEY(RIGHT),      VANTREL_KEY(UP),         VANTREL_KEY(DOWN)};
#undef VANTREL_KEY

std::optional<Chord> chordIn(std::string_view text) {
    Chord chord;
    for (text = trimmed(text); text.starts_with('<'); text = trimmed(text)) {
        const std::size_t end = std::min(text.find('>'), text.size() - 1) + 1;
        const auto* const modifier = std::find_if(modifiers.begin(), modifiers.end(), [&](const Modifier& candidate) {
            return candidate.text == text.substr(0, end);
        });
        if (modifier == modifiers.end()) {
            return std::nullopt;
        }
        chord.modifiers |= modifier->carbon;
        text.remove_prefix(end);
    }
    if (!text.starts_with("KEY_") || text.find_first_of(blanks) != std::string_view::npos) {
        return std::nullopt;
    }
    chord.key = text;
    return chord;
}

}  // namespace

std::optional<std::string> keyName(std::uint32_t evdevCode) {
    const auto* const key =
        std::find_if(keys.begin(), keys.end(), [=](const Key& candidate) { return candidate.code == evdevCode; });
    return key == keys.end() ? std::nullopt : std::optional(std::string(key->name));
}

std::string textOf(const Chord& chord) {
    std::string text;
    for (const Modifier& modifier : modifiers) {
        if ((chord.modifiers & modifier.carbon) != 0) {
            text += modifier.text;
            text += ' ';
        }
    }
    return text + chord.key;
}

std::vector<Chord> chordsInConfiguration(std::string_view text) {
    std::vector<Chord> chords;
    while (auto line = takePiece(text, '\n')) {
        std::string_view setting = takePiece(*line, '#').value_or("");
        takePiece(setting, '=');
        while (const auto value = takePiece(setting, '|')) {
            if (auto chord = chordIn(*value)) {
                chords.push_back(std::move(*chord));
            }
        }
    }
    return chords;
}

}  // namespace vantrel::wayfire
