#include "Vantrel/Backends/Gnome/Accelerators.hpp"

#include <gtest/gtest.h>

#include <memory>

#include "Vantrel/Backends/Wayland/SeatKeymap.hpp"

namespace vantrel::gnome {
namespace {

constexpr std::uint32_t hyperMask = controlKey | optionKey | cmdKey | shiftKey;
constexpr std::uint32_t placeOfD = 2;

std::vector<std::string> acceleratorsWith(std::uint32_t place, std::uint32_t modifiers, const char* layouts,
                                          const char* options = "") {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS),
                                                                             &xkb_context_unref);
    const xkb_rule_names names{
        .rules = "evdev", .model = "pc105", .layout = layouts, .variant = "", .options = options};
    const wayland::KeymapPointer keymap(xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    return acceleratorsOf({.keyCode = place, .modifiers = modifiers}, keymap.get());
}

using Accelerators = std::vector<std::string>;

TEST(Accelerators, acceleratorsOf_letter_isItsPlaceInEveryLayout) {
    for (const char* layouts : {"us", "ru", "fr", "us,ru"}) {
        EXPECT_EQ(acceleratorsWith(placeOfD, hyperMask, layouts), Accelerators{"<Control><Alt><Shift><Super>0x28"})
            << layouts;
    }
    EXPECT_EQ(acceleratorsWith(placeOfD, cmdKey, "us"), Accelerators{"<Super>0x28"});
}

TEST(Accelerators, acceleratorsOf_layoutSwitchByTwoModifiers_areThereWithoutEachOfThem) {
    EXPECT_EQ(acceleratorsWith(placeOfD, hyperMask, "us,ru", "grp:ctrl_shift_toggle").size(), 3U);
    const Accelerators all = acceleratorsWith(placeOfD, hyperMask, "us,ru", "grp:alt_shift_toggle");
    EXPECT_EQ(all, (Accelerators{"<Control><Alt><Shift><Super>0x28", "<Control><Alt><Super>0x28",
                                 "<Control><Shift><Super>0x28"}));
}

TEST(Accelerators, acceleratorsOf_layoutSwitch_isNothingToChordsWithOneOfThem) {
    EXPECT_EQ(acceleratorsWith(placeOfD, optionKey, "us,ru", "grp:alt_shift_toggle"), Accelerators{"<Alt>0x28"});
    EXPECT_EQ(acceleratorsWith(placeOfD, controlKey | optionKey, "us,ru", "grp:alt_shift_toggle"),
              Accelerators{"<Control><Alt>0x28"});
}

TEST(Accelerators, acceleratorsOf_noSuchKey_isNone) {
    EXPECT_TRUE(acceleratorsWith(200, hyperMask, "us").empty());
}

}  // namespace
}  // namespace vantrel::gnome
