#include "Vantrel/Interface/KeyboardShortcut.hpp"

#include <algorithm>
#include <string_view>

namespace vantrel {

namespace {

struct KeyLabel {
    std::uint32_t keyCode;
    std::string_view label;
};

struct ModifierLabel {
    std::uint32_t bit;
    std::string_view label;
};

// Modifier keys, the keypad, F13 and up and the editing cluster are left out: they print by their number.
constexpr std::array<KeyLabel, 68> keyLabels{{
    {0, "A"},
    {1, "S"},
    {2, "D"},
    {3, "F"},
    {4, "H"},
    {5, "G"},
    {6, "Z"},
    {7, "X"},
    {8, "C"},
    {9, "V"},
    {11, "B"},
    {12, "Q"},
    {13, "W"},
    {14, "E"},
    {15, "R"},
    {16, "Y"},
    {17, "T"},
    {18, "1"},
    {19, "2"},
    {20, "3"},
    {21, "4"},
    {22, "6"},
    {23, "5"},
    {24, "="},
    {25, "9"},
    {26, "7"},
    {27, "-"},
    {28, "8"},
    {29, "0"},
    {30, "]"},
    {31, "O"},
    {32, "U"},
    {33, "["},
    {34, "I"},
    {35, "P"},
    {36, "Return"},
    {37, "L"},
    {38, "J"},
    {39, "'"},
    {40, "K"},
    {41, ";"},
    {42, "\\"},
    {43, ","},
    {44, "/"},
    {45, "N"},
    {46, "M"},
    {47, "."},
    {48, "Tab"},
    {49, "Space"},
    {50, "`"},
    {51, "Delete"},
    {53, "Escape"},
    {96, "F5"},
    {97, "F6"},
    {98, "F7"},
    {99, "F3"},
    {100, "F8"},
    {101, "F9"},
    {103, "F11"},
    {109, "F10"},
    {111, "F12"},
    {118, "F4"},
    {120, "F2"},
    {122, "F1"},
    {123, "Left Arrow"},
    {124, "Right Arrow"},
    {125, "Down Arrow"},
    {126, "Up Arrow"},
}};

constexpr std::array<ModifierLabel, 4> modifierLabelsInOrder{{
    {KeyboardShortcut::control, "Ctrl"},
    {KeyboardShortcut::option, "Option"},
    {KeyboardShortcut::shift, "Shift"},
    {KeyboardShortcut::command, "Command"},
}};

}  // namespace

bool KeyboardShortcut::isKnownRaycastConflict() const {
    return modifiers == hyper && std::find(raycastReservedHyperKeys.begin(), raycastReservedHyperKeys.end(), keyCode) !=
                                     raycastReservedHyperKeys.end();
}

std::string KeyboardShortcut::displayText() const {
    std::string text;
    for (const std::string& label : modifierLabels(modifiers)) {
        text += label;
        text += " + ";
    }
    return text + keyLabel(keyCode);
}

std::vector<std::string> KeyboardShortcut::modifierLabels(std::uint32_t mask) {
    if (mask == hyper) {
        return {"Hyper"};
    }
    std::vector<std::string> labels;
    for (const ModifierLabel& modifier : modifierLabelsInOrder) {
        if ((mask & modifier.bit) != 0) {
            labels.emplace_back(modifier.label);
        }
    }
    return labels;
}

std::string KeyboardShortcut::keyLabel(std::uint32_t keyCode) {
    const auto* const entry = std::find_if(keyLabels.begin(), keyLabels.end(), [keyCode](const KeyLabel& candidate) {
        return candidate.keyCode == keyCode;
    });
    return entry == keyLabels.end() ? "Key " + std::to_string(keyCode) : std::string(entry->label);
}

}  // namespace vantrel
