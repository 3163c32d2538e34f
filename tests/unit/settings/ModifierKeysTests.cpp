#include "helpers/settings/ModifierKeys.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace vantrel::qt {
namespace {

/// The keymaps that people have, as xkb-data and this project's own files describe them.
class ModifierKeys : public testing::Test {
  protected:
    ModifierKeys() { xkb_context_include_path_append(context.get(), VANTREL_XKB_DATA); }

    /// The modifiers among the keys of a map that is put together as `setxkbmap -print` has it.
    x11::KeySet keysOf(const std::string& symbols) {
        const std::string text =
            "xkb_keymap { xkb_keycodes { include \"evdev+aliases(qwerty)\" }; xkb_types { include \"complete\" };"
            "xkb_compat { include \"complete\" }; xkb_symbols { include \"pc+" +
            symbols + "\" }; };";
        keymap.reset(xkb_keymap_new_from_string(context.get(), text.c_str(), XKB_KEYMAP_FORMAT_TEXT_V1,
                                                XKB_KEYMAP_COMPILE_NO_FLAGS));
        if (!keymap) {
            throw std::runtime_error("no keymap " + symbols);
        }
        return modifierKeysOf(*keymap);
    }

    bool has(const x11::KeySet& keys, const char* name) {
        return keys.test(xkb_keymap_key_by_name(keymap.get(), name));
    }

    std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context{xkb_context_new(XKB_CONTEXT_NO_FLAGS),
                                                                       &xkb_context_unref};
    std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> keymap{nullptr, &xkb_keymap_unref};
};

const std::vector<const char*> fixedModifiers{"LFSH", "RTSH", "LCTL", "RCTL", "LALT",
                                              "RALT", "LWIN", "RWIN", "CAPS", "NMLK"};
const std::vector<const char*> ordinaryKeys{"AC03", "SPCE", "RTRN", "TAB", "ESC", "FK04", "LEFT", "BKSL", "COMP"};

TEST_F(ModifierKeys, everyLayout_ordinaryKeyboard_areTheModifiersAndNoOthers) {
    for (const char* const layout : {"us", "de", "fr", "gb", "ru", "us+ru:2+group(alt_shift_toggle)"}) {
        SCOPED_TRACE(layout);
        const x11::KeySet keys = keysOf(std::string(layout) + "+inet(evdev)");
        for (const char* const name : fixedModifiers) {
            EXPECT_TRUE(has(keys, name)) << name;
        }
        for (const char* const name : ordinaryKeys) {
            EXPECT_FALSE(has(keys, name)) << name;
        }
    }
}

TEST_F(ModifierKeys, capsLockAsHyper_ofThisProject_isOne) {
    EXPECT_TRUE(has(keysOf("us+inet(evdev)+vantrel(hyper)"), "CAPS"));
    EXPECT_TRUE(has(keysOf("us+de:2+inet(evdev)+vantrel(hyper)"), "CAPS"));
}

TEST_F(ModifierKeys, optionsThatMoveModifiers_areFollowed) {
    EXPECT_FALSE(has(keysOf("us+inet(evdev)+capslock(escape)"), "CAPS"));
    EXPECT_FALSE(has(keysOf("us+inet(evdev)+capslock(backspace)"), "CAPS"));
    EXPECT_TRUE(has(keysOf("de+inet(evdev)+level3(bksl_switch)"), "BKSL"));
    EXPECT_TRUE(has(keysOf("de+inet(evdev)+level3(menu_switch)"), "COMP"));
    EXPECT_TRUE(has(keysOf("de+inet(evdev)+level3(ralt_switch)"), "RALT"));
}

}  // namespace
}  // namespace vantrel::qt
