#include "helpers/settings/ColorPreferences.hpp"

#include <gtest/gtest.h>

namespace vantrel::qt {
namespace {

TEST(ColorPreferences, isDarkTheme_namesOfThemes_areTakenAtTheirWord) {
    for (const char* const name : {"Adwaita-dark", "Adwaita:dark", "Yaru-purple-dark", "Arc-Dark", "Mint-Y-Dark-Aqua",
                                   "Greybird-dark", "Materia-dark-compact", "Breeze-Dark", "BREEZE_DARK"}) {
        EXPECT_TRUE(isDarkTheme(name)) << name;
    }
    for (const char* const name : {"", "-", "Adwaita", "Arc-Darker", "Darkish", "Yaru", "Menta", "BlackMATE"}) {
        EXPECT_FALSE(isDarkTheme(name)) << name;
    }
}

TEST(ColorPreferences, prefersDark_nothingSaid_isLight) {
    EXPECT_FALSE(prefersDark({}));
}

TEST(ColorPreferences, prefersDark_anyOfThem_isDark) {
    EXPECT_TRUE(prefersDark({.portal = ColorScheme::dark, .gtkTheme = {}}));
    EXPECT_TRUE(prefersDark({.gnome = ColorScheme::dark, .gtkTheme = {}}));
    EXPECT_TRUE(prefersDark({.gtkPrefersDark = true, .gtkTheme = {}}));
    EXPECT_TRUE(prefersDark({.gtkTheme = "Adwaita-dark"}));
}

TEST(ColorPreferences, prefersDark_theyDisagree_theMoreExplicitCounts) {
    EXPECT_FALSE(prefersDark({.portal = ColorScheme::light,
                              .gnome = ColorScheme::dark,
                              .gtkPrefersDark = true,
                              .gtkTheme = "Adwaita-dark"}));
    EXPECT_TRUE(prefersDark({.portal = ColorScheme::dark, .gnome = ColorScheme::light, .gtkTheme = "Adwaita"}));
    EXPECT_FALSE(prefersDark({.gnome = ColorScheme::light, .gtkPrefersDark = true, .gtkTheme = {}}));
    EXPECT_TRUE(prefersDark({.gtkPrefersDark = true, .gtkTheme = "Adwaita"}));
}

TEST(ColorPreferences, prefersDark_schemeThatIsNotKnown_saysNothing) {
    constexpr auto unknown = static_cast<ColorScheme>(3);
    EXPECT_TRUE(prefersDark({.portal = unknown, .gnome = ColorScheme::dark, .gtkTheme = {}}));
    EXPECT_TRUE(prefersDark({.portal = unknown, .gtkPrefersDark = true, .gtkTheme = {}}));
    EXPECT_FALSE(prefersDark({.portal = unknown, .gtkTheme = {}}));
}

}  // namespace
}  // namespace vantrel::qt
