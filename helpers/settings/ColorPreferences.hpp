#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel::qt {

/// By the numbers of the Settings portal's org.freedesktop.appearance, where any other says nothing either.
enum class ColorScheme : std::uint32_t { noPreference = 0, dark = 1, light = 2 };

/// What a desktop says about light and dark, the more explicit first.
struct ColorPreferences {
    ColorScheme portal = ColorScheme::noPreference;  ///< the Settings portal's, where one runs
    ColorScheme gnome = ColorScheme::noPreference;   ///< GNOME's own setting, which others keep too
    bool gtkPrefersDark = false;                     ///< that GTK programs are to take the dark form of their theme
    std::string gtkTheme;                            ///< the name of GTK's theme; empty for GTK's own choice
};

/// Whether the theme is a dark one by its name, as in "Adwaita-dark" and "Mint-Y-Dark-Aqua".
bool isDarkTheme(std::string_view name);

bool prefersDark(const ColorPreferences& preferences);

/// Asks the desktop. Blocks for a moment, at most for a tenth of a second where a portal does not answer; starts
/// nothing that does not run.
ColorPreferences readColorPreferences();

}  // namespace vantrel::qt
