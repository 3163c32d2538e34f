#include "Vantrel/Interface/KeyboardShortcut.hpp"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>

#include "Vantrel/Controller/AppDelegate.hpp"

namespace vantrel {
namespace {

std::map<std::uint32_t, std::string> expectedLabels() {
    return {{0, "A"},
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
            {126, "Up Arrow"}};
}

TEST(KeyboardShortcut, keyLabel_everyCodeOfAKeyboard_isItsLabelOrItsNumber) {
    const auto labels = expectedLabels();
    ASSERT_EQ(labels.size(), 68U);
    for (std::uint32_t code = 0; code <= 300; ++code) {
        const auto expected = labels.find(code);
        EXPECT_EQ(KeyboardShortcut::keyLabel(code),
                  expected == labels.end() ? "Key " + std::to_string(code) : expected->second);
    }
}

TEST(KeyboardShortcut, keyLabel_largestCode_isItsNumber) {
    EXPECT_EQ(KeyboardShortcut::keyLabel(4294967295U), "Key 4294967295");
}

TEST(KeyboardShortcut, modifierLabels_everyMaskOfTheFourModifiers_areInFixedOrder) {
    for (unsigned bits = 0; bits < 15; ++bits) {
        std::uint32_t mask = 0;
        std::vector<std::string> expected;
        constexpr std::array<std::pair<std::uint32_t, const char*>, 4> modifiers{
            {{0x1000, "Ctrl"}, {0x800, "Option"}, {0x200, "Shift"}, {0x100, "Command"}}};
        for (std::size_t index = 0; index < modifiers.size(); ++index) {
            if ((bits & (1U << index)) != 0) {
                mask |= modifiers.at(index).first;
                expected.emplace_back(modifiers.at(index).second);
            }
        }
        EXPECT_EQ(KeyboardShortcut::modifierLabels(mask), expected) << mask;
    }
}

TEST(KeyboardShortcut, modifierLabels_exactlyAllFour_isHyper) {
    EXPECT_EQ(KeyboardShortcut::modifierLabels(0x1B00), std::vector<std::string>{"Hyper"});
}

TEST(KeyboardShortcut, modifierLabels_allFourAndAnotherBit_namesTheFour) {
    const std::vector<std::string> allFour{"Ctrl", "Option", "Shift", "Command"};
    EXPECT_EQ(KeyboardShortcut::modifierLabels(0x1F00), allFour);
    EXPECT_EQ(KeyboardShortcut::modifierLabels(0xFFFFFFFF), allFour);
}

TEST(KeyboardShortcut, modifierLabels_otherBitsOnly_areNone) {
    EXPECT_TRUE(KeyboardShortcut::modifierLabels(0).empty());
    EXPECT_TRUE(KeyboardShortcut::modifierLabels(0xFFFFE4FF).empty());
}

TEST(KeyboardShortcut, displayText_joinsModifiersAndKey) {
    EXPECT_EQ(KeyboardShortcut().displayText(), "Hyper + D");
    EXPECT_EQ((KeyboardShortcut{124, 0x1900}.displayText()), "Ctrl + Option + Command + Right Arrow");
    EXPECT_EQ((KeyboardShortcut{1, 0x1B00}.displayText()), "Hyper + S");
    EXPECT_EQ((KeyboardShortcut{49, 0x300}.displayText()), "Shift + Command + Space");
    EXPECT_EQ((KeyboardShortcut{0, 0}.displayText()), "A");
    EXPECT_EQ((KeyboardShortcut{10, 0x1F00}.displayText()), "Ctrl + Option + Shift + Command + Key 10");
}

TEST(KeyboardShortcut, isKnownRaycastConflict_hyperWithAnyKey_isTrueForOneToFive) {
    for (std::uint32_t code = 0; code <= 127; ++code) {
        const bool isReserved = code == 18 || code == 19 || code == 20 || code == 21 || code == 23;
        EXPECT_EQ((KeyboardShortcut{code, 0x1B00}.isKnownRaycastConflict()), isReserved) << code;
    }
}

TEST(KeyboardShortcut, isKnownRaycastConflict_otherModifiers_isFalse) {
    for (const std::uint32_t mask : {0U, 0x1900U, 0x1F00U, 0xB00U, 0x1A00U}) {
        EXPECT_FALSE((KeyboardShortcut{18, mask}.isKnownRaycastConflict())) << mask;
    }
}

TEST(KeyboardShortcut, equality_comparesKeyAndModifiers) {
    EXPECT_EQ(KeyboardShortcut(), (KeyboardShortcut{2, 0x1B00}));
    EXPECT_NE(KeyboardShortcut(), (KeyboardShortcut{3, 0x1B00}));
    EXPECT_NE(KeyboardShortcut(), (KeyboardShortcut{2, 0x1900}));
}

TEST(KeyboardShortcut, readyStatusText_hyper_namesCapsLock) {
    EXPECT_EQ(AppDelegate::readyStatusText(KeyboardShortcut()), "Ready. With Raycast Hyper Key, use Caps Lock + D.");
}

TEST(KeyboardShortcut, readyStatusText_otherModifiers_namesTheShortcut) {
    EXPECT_EQ(AppDelegate::readyStatusText({46, 0x1900}), "Ready. Use Ctrl + Option + Command + M.");
    EXPECT_EQ(AppDelegate::readyStatusText({49, 0x1800}), "Ready. Use Ctrl + Option + Space.");
    EXPECT_EQ(AppDelegate::readyStatusText({2, 0x1F00}), "Ready. Use Ctrl + Option + Shift + Command + D.");
}

}  // namespace
}  // namespace vantrel
