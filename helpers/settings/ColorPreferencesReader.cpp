#include "helpers/settings/ColorPreferences.hpp"

#include <gio/gio.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <optional>

#include "Vantrel/Backends/X11/XSettings.hpp"
#include "Vantrel/Handles/GLibHandles.hpp"
#include "helpers/settings/ServerConnection.hpp"

namespace vantrel::qt {

namespace {

ColorScheme portalScheme() {
    auto question = QDBusMessage::createMethodCall("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                                                   "org.freedesktop.portal.Settings", "Read");
    question << "org.freedesktop.appearance"
             << "color-scheme";
    question.setAutoStartService(false);
    constexpr int longestWait = 100;  // in milliseconds
    const QDBusMessage answer = QDBusConnection::sessionBus().call(question, QDBus::Block, longestWait);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) {
        return ColorScheme::noPreference;
    }
    QVariant value = answer.arguments().first();
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return static_cast<ColorScheme>(value.toUInt());
}

/// A text of GNOME's settings; none where no desktop of that kind is installed.
std::optional<std::string> gnomeSetting(const char* key) {
    struct Unreference {
        void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
        void operator()(GSettings* settings) const { g_object_unref(settings); }
    };
    // Asked for what does not exist, GSettings would end the process.
    GSettingsSchemaSource* const source = g_settings_schema_source_get_default();
    const std::unique_ptr<GSettingsSchema, Unreference> schema(
        source != nullptr ? g_settings_schema_source_lookup(source, "org.gnome.desktop.interface", TRUE) : nullptr);
    if (!schema || g_settings_schema_has_key(schema.get(), key) == FALSE) {
        return std::nullopt;
    }
    const std::unique_ptr<GSettings, Unreference> settings(g_settings_new_full(schema.get(), nullptr, nullptr));
    const GCharPointer text(g_settings_get_string(settings.get(), key));
    return std::string(text.get());
}

ColorScheme gnomeScheme() {
    const auto setting = gnomeSetting("color-scheme");
    if (setting == "prefer-dark") {
        return ColorScheme::dark;
    }
    return setting == "prefer-light" ? ColorScheme::light : ColorScheme::noPreference;
}

/// A setting of GTK's files, of the person's own before the machine's; invalid where none has it.
QVariant gtkFileSetting(const QString& key) {
    for (const char* const version : {"gtk-3.0", "gtk-4.0"}) {
        const QString file = QString(version) + "/settings.ini";
        QStringList files = QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, file);
        files.append("/etc/" + file);
        for (const QString& path : files) {
            QVariant value = QSettings(path, QSettings::IniFormat).value("Settings/" + key);
            if (value.isValid()) {
                return value;
            }
        }
    }
    return {};
}

/// From where GTK takes it: on X11 from the settings manager, elsewhere from GNOME's settings, else from its files.
std::string gtkTheme() {
    if (const QString own = qEnvironmentVariable("GTK_THEME"); !own.isEmpty()) {
        return own.toStdString();
    }
    std::string theme;
    if (xcb_connection_t* const server = serverConnection()) {
        const std::string published = x11::publishedXSettings(server, 0);
        const x11::XSettings settings = x11::readXSettings(published);
        if (const auto* const text = x11::valueIn<std::string_view>(settings, "Net/ThemeName")) {
            theme = *text;
        }
    } else {
        theme = gnomeSetting("gtk-theme").value_or("");
    }
    return theme.empty() ? gtkFileSetting("gtk-theme-name").toString().toStdString() : theme;
}

}  // namespace

ColorPreferences readColorPreferences() {
    return {.portal = portalScheme(),
            .gnome = gnomeScheme(),
            .gtkPrefersDark = gtkFileSetting("gtk-application-prefer-dark-theme").toBool(),
            .gtkTheme = gtkTheme()};
}

}  // namespace vantrel::qt
