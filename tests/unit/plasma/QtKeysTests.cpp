#include "Vantrel/Backends/Plasma/QtKeys.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "Vantrel/Backends/Wayland/KeyBindings.hpp"
#include "Vantrel/Backends/Wayland/SeatKeymap.hpp"
#include "Vantrel/Platform/HotKeyServices.hpp"

namespace vantrel::plasma {
namespace {

constexpr std::uint32_t hyper = controlKey | optionKey | cmdKey | shiftKey;
constexpr std::uint32_t controlOptionCommand = controlKey | optionKey | cmdKey;

/// What KWin makes of the press of the place, on a keyboard of these layouts.
std::vector<QtKey> keysAt(std::uint32_t place, std::uint32_t modifiers, const char* layouts) {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS),
                                                                             &xkb_context_unref);
    const xkb_rule_names names{.rules = "evdev", .model = "pc105", .layout = layouts, .variant = "", .options = ""};
    const wayland::KeymapPointer keymap(xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    return qtKeysOf(wayland::keycodesAt(place, keymap.get()), modifiers, keymap.get());
}

TEST(QtKeys, letter_withShift_isTheCapitalWithShift) {
    EXPECT_EQ(keysAt(2, hyper, "us"), std::vector<QtKey>{0x1E000044});
}

TEST(QtKeys, letter_withoutShift_isTheCapital) {
    EXPECT_EQ(keysAt(46, controlOptionCommand, "us"), std::vector<QtKey>{0x1C00004D});
}

TEST(QtKeys, letter_severalLayouts_isThatOfEach) {
    EXPECT_EQ(keysAt(2, hyper, "us,ru"), (std::vector<QtKey>{0x1E000044, 0x1E000412}));
}

TEST(QtKeys, letter_twoLayoutsWithTheSame_isThereOnce) {
    EXPECT_EQ(keysAt(2, hyper, "us,de"), std::vector<QtKey>{0x1E000044});
}

TEST(QtKeys, digit_withShift_isTheSignWithoutShift) {
    EXPECT_EQ(keysAt(18, hyper, "us"), std::vector<QtKey>{0x1C000021});
}

TEST(QtKeys, arrow_isTheNamedKey) {
    EXPECT_EQ(keysAt(123, controlOptionCommand, "us"), std::vector<QtKey>{0x1D000012});
    EXPECT_EQ(keysAt(124, hyper, "us"), std::vector<QtKey>{0x1F000014});
}

TEST(QtKeys, functionKey_isNumbered) {
    EXPECT_EQ(keysAt(118, controlOptionCommand, "us"), std::vector<QtKey>{0x1D000033});
}

TEST(QtKeys, keypad_isWhatItTypesWithAndWithoutNumLock) {
    auto keys = keysAt(86, hyper, "us");
    std::sort(keys.begin(), keys.end());
    EXPECT_EQ(keys, (std::vector<QtKey>{0x3C000034, 0x3D000012}));
}

TEST(QtKeys, noSuchKey_isNone) {
    EXPECT_TRUE(keysAt(200, hyper, "us").empty());
}

}  // namespace
}  // namespace vantrel::plasma
