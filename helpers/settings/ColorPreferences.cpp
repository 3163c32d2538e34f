#include "helpers/settings/ColorPreferences.hpp"

#include <QRegularExpression>
#include <QString>

namespace vantrel::qt {

bool isDarkTheme(std::string_view name) {
    // A word of its own: "Arc-Darker" is a light theme with dark title bars.
    static const QRegularExpression dark("(^|[-_: ])dark($|[-_: ])", QRegularExpression::CaseInsensitiveOption);
    return dark.match(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))).hasMatch();
}

bool prefersDark(const ColorPreferences& preferences) {
    for (const ColorScheme scheme : {preferences.portal, preferences.gnome}) {
        if (scheme == ColorScheme::dark || scheme == ColorScheme::light) {
            return scheme == ColorScheme::dark;
        }
    }
    return preferences.gtkPrefersDark || isDarkTheme(preferences.gtkTheme);
}

}  // namespace vantrel::qt
