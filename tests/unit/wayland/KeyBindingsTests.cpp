#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <memory>

#include "Vantrel/Backends/Wayland/KeyBindings.hpp"
#include "Vantrel/Backends/Wayland/SeatKeymap.hpp"

namespace vantrel::wayland {
namespace {

constexpr std::uint32_t hyper = controlModifier | altModifier | shiftModifier | logoModifier;
constexpr xkb_keycode_t dPlace = 40;

KeymapPointer keymap(const char* layouts, const char* options = "") {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS),
                                                                             &xkb_context_unref);
    const xkb_rule_names names{
        .rules = "evdev", .model = "pc105", .layout = layouts, .variant = "", .options = options};
    return KeymapPointer(xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

ConfiguredBinding symbol(std::uint32_t modifiers, xkb_keysym_t keysym) {
    return {.mode = "default", .modifiers = modifiers, .keycode = 0, .keysym = keysym};
}

TEST(KeyBindings, realModifiers_carbonsFour_areTheUsualOnes) {
    EXPECT_EQ(realModifiers(combinationModifiers), hyper);
    EXPECT_EQ(realModifiers(cmdKey), logoModifier);
    EXPECT_EQ(realModifiers(0), 0U);
}

TEST(KeyBindings, keycodesAt_place_isTheSameOnEveryLayout) {
    constexpr std::uint32_t virtualD = 2;
    for (const char* layouts : {"us", "ru", "us,ru", "fr", "us(dvorak)"}) {
        const auto map = keymap(layouts);
        ASSERT_NE(map, nullptr);
        EXPECT_EQ(keycodesAt(virtualD, map.get()), std::vector<xkb_keycode_t>{dPlace}) << layouts;
    }
}

TEST(KeyBindings, keycodesAt_severalKeysOrNone_givesThemAll) {
    constexpr std::uint32_t f13 = 105;  // Print stands there, too
    constexpr std::uint32_t noKey = 200;
    const auto map = keymap("us");
    EXPECT_EQ(keycodesAt(f13, map.get()).size(), 2U);
    EXPECT_TRUE(keycodesAt(noKey, map.get()).empty());
}

TEST(KeyBindings, hidingKeys_layoutToggle_areItsModifierKeys) {
    const auto toggled = keymap("us,ru", "grp:alt_shift_toggle");
    std::uint32_t modifiers = 0;
    for (const HidingKey& key : hidingKeys(toggled.get())) {
        modifiers |= key.modifier;
    }
    EXPECT_EQ(modifiers, altModifier | shiftModifier);
    for (const char* options : {"", "grp:toggle", "grp:win_space_toggle", "grp:menu_toggle"}) {
        EXPECT_TRUE(hidingKeys(keymap("us,ru", options).get()).empty()) << options;
    }
}

TEST(KeyBindings, isMeantBy_place_withTheSameModifiersOnly) {
    const auto map = keymap("us");
    const ConfiguredBinding binding{
        .mode = "default", .modifiers = hyper, .keycode = dPlace, .keysym = XKB_KEY_NoSymbol};
    EXPECT_TRUE(isMeantBy(binding, hyper, dPlace, map.get()));
    EXPECT_FALSE(isMeantBy(binding, hyper, dPlace + 1, map.get()));
    EXPECT_FALSE(isMeantBy(binding, hyper & ~shiftModifier, dPlace, map.get()));
}

TEST(KeyBindings, isMeantBy_symbol_inAnyLayout) {
    const auto map = keymap("us,ru");
    EXPECT_TRUE(isMeantBy(symbol(hyper, XKB_KEY_d), hyper, dPlace, map.get()));
    EXPECT_TRUE(isMeantBy(symbol(hyper, XKB_KEY_Cyrillic_ve), hyper, dPlace, map.get()));
    EXPECT_FALSE(isMeantBy(symbol(hyper, XKB_KEY_e), hyper, dPlace, map.get()));
    EXPECT_FALSE(isMeantBy(symbol(logoModifier, XKB_KEY_d), hyper, dPlace, map.get()));
    EXPECT_FALSE(isMeantBy(symbol(hyper, XKB_KEY_d), hyper & ~shiftModifier, dPlace, map.get()));
}

TEST(KeyBindings, isMeantBy_symbolBehindShift_withShiftOrWithItUsedUp) {
    constexpr xkb_keycode_t onePlace = 10;
    const auto map = keymap("us");
    const std::uint32_t withShift = logoModifier | shiftModifier;
    EXPECT_TRUE(isMeantBy(symbol(logoModifier, XKB_KEY_exclam), withShift, onePlace, map.get()));
    EXPECT_TRUE(isMeantBy(symbol(withShift, XKB_KEY_exclam), withShift, onePlace, map.get()));
    EXPECT_TRUE(isMeantBy(symbol(withShift, XKB_KEY_1), withShift, onePlace, map.get()));
    EXPECT_FALSE(isMeantBy(symbol(logoModifier, XKB_KEY_1), withShift, onePlace, map.get()));
}

}  // namespace
}  // namespace vantrel::wayland
