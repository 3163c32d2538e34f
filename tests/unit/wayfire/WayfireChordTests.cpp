#include "Vantrel/Backends/Wayfire/WayfireChord.hpp"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include "Vantrel/Backends/Common/KeyPlaces.hpp"
#include "Vantrel/Backends/Wayland/KeyBindings.hpp"
#include "Vantrel/Backends/Wayland/SeatKeymap.hpp"

namespace vantrel::wayfire {
namespace {

constexpr std::uint32_t hyper = combinationModifiers;

TEST(WayfireChord, textOf_chord_isWhatWayfireReads) {
    EXPECT_EQ(textOf({.modifiers = hyper, .key = "KEY_D"}), "<ctrl> <alt> <shift> <super> KEY_D");
    EXPECT_EQ(textOf({.modifiers = optionKey, .key = "KEY_LEFT"}), "<alt> KEY_LEFT");
}

TEST(WayfireChord, keyName_ofNumber_isTheKernels) {
    EXPECT_EQ(keyName(KEY_D), "KEY_D");
    EXPECT_EQ(keyName(KEY_102ND), "KEY_102ND");
    EXPECT_EQ(keyName(KEY_VOLUMEUP), std::nullopt);
}

TEST(WayfireChord, keyName_everyPlaceThatHasAKey_hasOne) {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS),
                                                                             &xkb_context_unref);
    const wayland::KeymapPointer keymap(xkb_keymap_new_from_names(context.get(), nullptr, XKB_KEYMAP_COMPILE_NO_FLAGS));
    ASSERT_NE(keymap, nullptr);
    constexpr std::uint32_t firstModifier = 54;
    constexpr std::uint32_t lastModifier = 62;
    for (std::uint32_t virtualKey = 0; virtualKey < 127; ++virtualKey) {
        for (const xkb_keycode_t keycode : wayland::keycodesAt(virtualKey, keymap.get())) {
            if (virtualKey < firstModifier || virtualKey > lastModifier) {
                EXPECT_TRUE(keyName(keycode - 8)) << virtualKey;
            }
        }
    }
}

TEST(WayfireChord, chordsInConfiguration_everyForm_areFound) {
    const auto chords = chordsInConfiguration(
        "[command]\n"
        "binding_terminal = <super> KEY_ENTER\n"
        "  binding_two=<ctrl><alt>KEY_T | <ctrl> <shift> KEY_ESC  # mine\n"
        "[vswitch]\n"
        "binding_left =\t<ctrl> <super> KEY_LEFT\n");
    EXPECT_EQ(chords, (std::vector<Chord>{{.modifiers = cmdKey, .key = "KEY_ENTER"},
                                          {.modifiers = controlKey | optionKey, .key = "KEY_T"},
                                          {.modifiers = controlKey | shiftKey, .key = "KEY_ESC"},
                                          {.modifiers = controlKey | cmdKey, .key = "KEY_LEFT"}}));
}

TEST(WayfireChord, chordsInConfiguration_anythingElse_isNone) {
    EXPECT_TRUE(chordsInConfiguration("").empty());
    EXPECT_TRUE(
        chordsInConfiguration("# binding = <super> KEY_A\n[section]\nkey\n=\n"
                              "a = <hyper> KEY_A\nb = <super> BTN_LEFT\nc = <super>\nd = <super\ne = swipe up 3\n"
                              "f = <super> KEY_A KEY_B\ng = none | disabled\n")
            .empty());
}

}  // namespace
}  // namespace vantrel::wayfire
