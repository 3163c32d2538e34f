#include <gtest/gtest.h>
#include <sys/stat.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <cstdlib>
#include <fstream>

#include "Vantrel/Backends/Sway/SwayConfiguration.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::sway {
namespace {

constexpr std::uint32_t hyper =
    wayland::controlModifier | wayland::altModifier | wayland::shiftModifier | wayland::logoModifier;

std::vector<wayland::ConfiguredBinding> bindingsIn(std::string_view text) {
    return bindingsInConfiguration(text, "/nowhere/config");
}

wayland::ConfiguredBinding symbol(std::uint32_t modifiers, xkb_keysym_t keysym, const std::string& mode = "default") {
    return {.mode = mode, .modifiers = modifiers, .keycode = 0, .keysym = keysym};
}

wayland::ConfiguredBinding code(std::uint32_t modifiers, xkb_keycode_t keycode, const std::string& mode = "default") {
    return {.mode = mode, .modifiers = modifiers, .keycode = keycode, .keysym = XKB_KEY_NoSymbol};
}

using Bindings = std::vector<wayland::ConfiguredBinding>;

struct Line {
    const char* name;
    const char* text;
    Bindings bindings;
};

class SwayConfigurationLine : public testing::TestWithParam<Line> {};

TEST_P(SwayConfigurationLine, bindingsInConfiguration_line_isUnderstood) {
    EXPECT_EQ(bindingsIn(GetParam().text), GetParam().bindings);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, SwayConfigurationLine,
    testing::Values(
        Line{"symbol", "bindsym Ctrl+Mod1+Shift+Mod4+d exec foot", {symbol(hyper, XKB_KEY_d)}},
        Line{"otherNames", "bindsym control+ALT+shift+Super+D exec foot", {symbol(hyper, XKB_KEY_d)}},
        Line{"place", "bindcode Ctrl+Mod1+40 exec foot", {code(wayland::controlModifier | wayland::altModifier, 40)}},
        Line{"options",
             "bindsym --to-code --locked --input-device=1:2:x Mod4+Left exec a b",
             {symbol(wayland::logoModifier, XKB_KEY_Left)}},
        Line{"locksDoNotCount", "bindsym Mod2+Lock+Mod4+d nop", {symbol(wayland::logoModifier, XKB_KEY_d)}},
        Line{"quoted", "bindsym \"Mod4+d\" exec foot", {symbol(wayland::logoModifier, XKB_KEY_d)}},
        Line{"noModifier", "  bindsym XF86AudioMute exec foot  ", {symbol(0, XKB_KEY_XF86AudioMute)}},
        Line{"oneLayout", "bindsym Group2+Mod4+d exec foot", {symbol(wayland::logoModifier, XKB_KEY_d)}},
        Line{"mouseButton", "bindsym --whole-window button4 nop", {}}, Line{"severalKeys", "bindsym a+b exec foot", {}},
        Line{"unknownKey", "bindsym Mod4+NoSuchKey exec foot", {}}, Line{"comment", "# bindsym Mod4+d exec foot", {}},
        Line{"somethingElse", "exec bindsym Mod4+d", {}}, Line{"nothing", "bindsym", {}},
        Line{"continued", "bindsym \\\n  Mod4+d \\\n  exec foot", {symbol(wayland::logoModifier, XKB_KEY_d)}},
        Line{"taken away",
             "bindsym Mod4+d nop\nbindsym Mod4+e nop\nunbindsym Mod4+d",
             {symbol(wayland::logoModifier, XKB_KEY_e)}},
        Line{"mode", "mode resize bindsym Mod4+d nop", {symbol(wayland::logoModifier, XKB_KEY_d, "resize")}},
        Line{"modeBlock",
             "mode \"to go\" {\n  bindsym d nop\n  bindcode 40 nop\n}\nbindsym e nop",
             {symbol(0, XKB_KEY_d, "to go"), code(0, 40, "to go"), symbol(0, XKB_KEY_e)}},
        Line{"braceBelow",
             "mode --pango_markup m\n{\nbindsym d nop\n}\nbindsym e nop",
             {symbol(0, XKB_KEY_d, "m"), symbol(0, XKB_KEY_e)}},
        Line{"symbolBlock",
             "bindsym --locked {\n Mod4+d nop\n Mod4+e nop\n}",
             {symbol(wayland::logoModifier, XKB_KEY_d), symbol(wayland::logoModifier, XKB_KEY_e)}},
        Line{"blockInBlock",
             "mode m {\nbindcode {\n40 nop\n}\nbindsym e nop\n}",
             {code(0, 40, "m"), symbol(0, XKB_KEY_e, "m")}},
        Line{"otherBlocks",
             "bar {\n bindsym button1 nop\n bindsym Mod4+d nop\n}\ninput * {\n xkb_layout us\n}\nbindsym e nop",
             {symbol(0, XKB_KEY_e)}},
        Line{"variables",
             "set $mod Mod4\nset $modifier Ctrl+$mod\nbindsym $modifier+d nop",
             {symbol(wayland::controlModifier | wayland::logoModifier, XKB_KEY_d)}},
        Line{"variableForAll",
             "set $k Mod4+d\nset $m my mode\nmode \"$m\" bindsym $k nop",
             {symbol(wayland::logoModifier, XKB_KEY_d, "my mode")}},
        Line{"variableThatIsNot", "bindsym $none+d nop", {}},
        Line{"variableOfNothing", "set $none \"\"\n$none\nbindsym e nop", {symbol(0, XKB_KEY_e)}},
        Line{"variableOfBlanks", "set $none \"  \"\n$none\nbindsym e nop", {symbol(0, XKB_KEY_e)}},
        Line{"variableWithoutName", "set \"\" x\nbindsym $mod+d nop\nbindsym e nop", {symbol(0, XKB_KEY_e)}},
        Line{"modeWithoutMore", "mode", {}},
        Line{"bracesThatDoNotMatch", "}\n}\nbindsym e nop\nmode m {", {symbol(0, XKB_KEY_e)}}),
    [](const auto& test) {
        std::string name = test.param.name;
        std::erase(name, ' ');
        return name;
    });

class SwayInclude : public testing::Test {
  protected:
    void write(const std::filesystem::path& name, const std::string& text) const {
        std::filesystem::create_directories((directory.path() / name).parent_path());
        std::ofstream(directory.path() / name) << text;
    }
    [[nodiscard]] Bindings bindings(const std::string& text) const {
        return bindingsInConfiguration(text, directory.path() / "config");
    }

    desk::TemporaryDirectory directory{"sway config"};
};

TEST_F(SwayInclude, relativeName_startsWhereTheFileStands) {
    write("keys", "bindsym d nop\n");
    EXPECT_EQ(bindings("include keys"), (Bindings{symbol(0, XKB_KEY_d)}));
    EXPECT_EQ(bindings("include ./keys"), (Bindings{symbol(0, XKB_KEY_d)}));
    EXPECT_EQ(bindings("include 'keys'"), (Bindings{symbol(0, XKB_KEY_d)}));
    EXPECT_EQ(bindings("include keys none"), (Bindings{symbol(0, XKB_KEY_d)}));
}

TEST_F(SwayInclude, pattern_includesAllInOrder) {
    write("config.d/20-b", "bindsym e nop\n");
    write("config.d/10-a", "bindsym d nop\n");
    EXPECT_EQ(bindings("include config.d/*"), (Bindings{symbol(0, XKB_KEY_d), symbol(0, XKB_KEY_e)}));
}

TEST_F(SwayInclude, variables_holdInBothFiles) {
    write("sub dir/keys", "bindsym $mod+d nop\nset $other Ctrl\ninclude more\n");
    write("sub dir/more", "bindsym $other+e nop\n");
    EXPECT_EQ(bindings("set $mod Mod4\nset $dir sub\\ dir\ninclude \"sub dir/keys\"\nbindsym $other+f nop"),
              (Bindings{symbol(wayland::logoModifier, XKB_KEY_d), symbol(wayland::controlModifier, XKB_KEY_e),
                        symbol(wayland::controlModifier, XKB_KEY_f)}));
}

TEST_F(SwayInclude, environmentVariable_isResolved) {
    write("keys", "bindsym d nop\n");
    setenv("VANTREL_TEST_DIRECTORY", directory.path().c_str(), 1);
    EXPECT_EQ(bindings("include \"$VANTREL_TEST_DIRECTORY/keys\""), (Bindings{symbol(0, XKB_KEY_d)}));
}

TEST_F(SwayInclude, itself_ends) {
    write("config", "include config\ninclude other\nbindsym d nop\n");
    write("other", "include config\n");
    EXPECT_EQ(bindings("include config\ninclude other\nbindsym d nop\n"), (Bindings{symbol(0, XKB_KEY_d)}));
}

TEST_F(SwayInclude, command_isNotRun) {
    const auto trace = directory.path() / "trace";
    EXPECT_EQ(bindings("include \"$(touch '" + trace.native() + "')\"\nbindsym d nop"),
              (Bindings{symbol(0, XKB_KEY_d)}));
    EXPECT_FALSE(std::filesystem::exists(trace));
}

TEST_F(SwayInclude, pipe_isNotWaitedFor) {
    ASSERT_EQ(mkfifo((directory.path() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(bindings("include pipe\ninclude .\nbindsym d nop"), (Bindings{symbol(0, XKB_KEY_d)}));
}

}  // namespace
}  // namespace vantrel::sway
