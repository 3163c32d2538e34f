#include "helpers/settings/ColorPreferences.hpp"

#include <algorithm>

namespace vantrel::qt {

namespace {

bool isWordDark(std::string_view word) {
    constexpr std::string_view dark = "dark";
    return std::equal(word.begin(), word.end(), dark.begin(), dark.end(),
                      [](char letter, char wanted) { return (letter | ' ') == wanted; });
}

}  // namespace

bool isDarkTheme(std::string_view name) {
    // A word of its own: "Arc-Darker" is a light theme with dark title bars.
    while (!name.empty()) {
        const std::size_t end = std::min(name.find_first_of("-_: "), name.size());
        if (isWordDark(name.substr(0, end))) {
            return true;
        }
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return false;
}

bool prefersDark(const ColorPreferences& preferences) {
    for (const ColorScheme scheme : {preferences.portal, preferences.gnome}) {
        if (scheme != ColorScheme::noPreference) {
            return scheme == ColorScheme::dark;
        }
    }
    return preferences.gtkPrefersDark || isDarkTheme(preferences.gtkTheme);
}

}  // namespace vantrel::qt
