#include "helpers/settings/DesktopColors.hpp"

#include <QApplication>
#include <QDBusConnection>
#include <QPalette>

#include "Vantrel/Backends/X11/XcbRequests.hpp"
#include "helpers/settings/ColorPreferences.hpp"
#include "helpers/settings/ServerConnection.hpp"

namespace vantrel::qt {

namespace {

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// Neutral greys, which go with any desktop's dark theme.
QPalette darkPalette() {
    const QColor window(54, 54, 54);
    const QColor text(240, 240, 240);
    const QColor disabledText(140, 140, 140);
    QPalette palette(QColor(66, 66, 66), window);
    palette.setColor(QPalette::Base, QColor(27, 27, 27));
    palette.setColor(QPalette::AlternateBase, QColor(36, 36, 36));
    palette.setColor(QPalette::ToolTipBase, QColor(27, 27, 27));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Highlight, QColor(38, 112, 170));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(98, 174, 233));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabledText);
    }
    return palette;
}

}  // namespace

DesktopColors::DesktopColors() {
    followSoon_.setSingleShot(true);
    QObject::connect(&followSoon_, &QTimer::timeout, &followSoon_, [this] { follow(); });
    // From whoever is the portal, now or later: asking for its present owner could take long.
    QDBusConnection::sessionBus().connect(QString(), "/org/freedesktop/portal/desktop",
                                          "org.freedesktop.portal.Settings", "SettingChanged",
                                          {"org.freedesktop.appearance"}, QString(), &followSoon_, SLOT(start()));
    if (xcb_connection_t* const server = serverConnection()) {
        xsettings_ = x11::internAtom(server, "_XSETTINGS_SETTINGS");
        qApp->installNativeEventFilter(this);
    }
    // What nobody tells of is found when the person comes back from where they changed it.
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &followSoon_, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) {
            followSoon_.start();
        }
    });
    follow();
}

DesktopColors::~DesktopColors() {
    qApp->removeNativeEventFilter(this);
}

bool DesktopColors::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    // Qt has asked the server for the changes of the settings manager's window.
    const auto& event = *static_cast<const xcb_property_notify_event_t*>(message);
    if ((event.response_type & 0x7FU) == XCB_PROPERTY_NOTIFY && event.atom == xsettings_) {
        followSoon_.start();
    }
    return false;
}

void DesktopColors::follow() {
    const bool wantsDark = prefersDark(readColorPreferences());
    if (isOurs_ && !wantsDark) {
        isOurs_ = false;
        QApplication::setPalette(QPalette());
    } else if (!isOurs_ && wantsDark && !isDark(QApplication::palette())) {
        isOurs_ = true;
        QApplication::setPalette(darkPalette());
    }
}

}  // namespace vantrel::qt
