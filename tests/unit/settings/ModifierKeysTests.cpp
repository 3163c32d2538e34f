#include "helpers/settings/ModifierKeys.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace vantrel::qt {
namespace {

/// xkb-data with this project's own symbols in it, by links: one folder, because libxkbcommon 1.5 leaks the name of a
/// file that it does not find in the first of several.
class KeyboardData {
  public:
    KeyboardData() : folder_(testing::TempDir() + "vantrel-xkb-" + std::to_string(getpid())) {
        const std::filesystem::path installed = "/usr/share/X11/xkb";
        std::filesystem::create_directories(folder_ / "symbols");
        for (const char* const part : {"keycodes", "types", "compat"}) {
            std::filesystem::create_directory_symlink(installed / part, folder_ / part);
        }
        link(installed / "symbols");
        link(VANTREL_XKB_DATA "/symbols");
    }
    ~KeyboardData() { std::filesystem::remove_all(folder_); }
    KeyboardData(const KeyboardData&) = delete;
    KeyboardData& operator=(const KeyboardData&) = delete;

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

  private:
    void link(const std::filesystem::path& symbols) {
        for (const auto& file : std::filesystem::directory_iterator(symbols)) {
            std::filesystem::create_symlink(file.path(), folder_ / "symbols" / file.path().filename());
        }
    }

    std::filesystem::path folder_;
};

/// The keymaps that people have, as xkb-data and this project's own files describe them.
class ModifierKeys : public testing::Test {
  protected:
    ModifierKeys() { xkb_context_include_path_append(context.get(), data.folder().c_str()); }

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

    KeyboardData data;
    std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context{xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES),
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
