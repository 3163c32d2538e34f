#include "helpers/settings/QtGuest.hpp"

#include <QDir>
#include <QEvent>
#include <QIcon>
#include <QLibraryInfo>
#include <QPluginLoader>
#include <QStringList>
#include <QWidget>
#include <clocale>

#include <glib.h>
#include <xcb/xcb.h>

namespace vantrel::qt {

namespace {

/// Where Qt looks for the plugins that connect it to a windowing system.
QStringList platformPluginFolders() {
    QStringList folders;
    const QString own = qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH");
    if (!own.isEmpty()) {
        folders.append(own.split(':', Qt::SkipEmptyParts));
    }
    for (const QString& plugins : qEnvironmentVariable("QT_PLUGIN_PATH").split(':', Qt::SkipEmptyParts)) {
        folders.append(plugins + "/platforms");
    }
    folders.append(QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms");
    return folders;
}

std::string pluginProblem(const std::string& windowingSystem) {
    // What follows a colon are options of the plugin.
    const QString name = QString::fromStdString(windowingSystem).section(':', 0, 0);
    QString reason;
    for (const QString& folder : platformPluginFolders()) {
        QPluginLoader plugin(folder + "/libq" + name + ".so");
        if (plugin.load()) {
            return {};
        }
        reason = plugin.errorString();
    }
    return "Qt's plugin for " + windowingSystem + " does not load: " + reason.toStdString();
}

std::string displayProblem(const std::string& windowingSystem) {
    if (windowingSystem != "xcb") {
        return {};
    }
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const bool isRefused = xcb_connection_has_error(connection) != 0;
    xcb_disconnect(connection);
    return isRefused ? "the X server takes no further connection" : "";
}

/// The icons beside the program, which are not where the desktop looks for icons when it runs where it was built.
QString ownIcons() {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + "/" VANTREL_DATA_FROM_BIN "/icons");
}

/// Numbers are written and read in the "C" locale by the host; Qt sets the person's for the whole process.
class NumericLocaleKeeper {
  public:
    NumericLocaleKeeper() : name_(std::setlocale(LC_NUMERIC, nullptr)) {}
    ~NumericLocaleKeeper() { std::setlocale(LC_NUMERIC, name_.c_str()); }
    NumericLocaleKeeper(const NumericLocaleKeeper&) = delete;
    NumericLocaleKeeper& operator=(const NumericLocaleKeeper&) = delete;

  private:
    std::string name_;
};

}  // namespace

std::unique_ptr<QtGuest> QtGuest::start(const std::string& windowingSystem, std::string& problem) {
    problem = pluginProblem(windowingSystem);
    if (problem.empty()) {
        problem = displayProblem(windowingSystem);
    }
    if (!problem.empty()) {
        return nullptr;
    }
    return std::unique_ptr<QtGuest>(new QtGuest(windowingSystem));  // NOLINT: the constructor is private
}

QtGuest::QtGuest(const std::string& windowingSystem) : platform_(windowingSystem) {
    // Qt's own event loop without GLib would leave its timers to nobody.
    qunsetenv("QT_NO_GLIB");
    // Its threads go without: GLib was in the process first, so it clears a thread that ends before Qt does, and Qt
    // from 6.8 on then finds its context gone and makes GLib complain on stderr.
    qputenv("QT_NO_THREADED_GLIB", "1");
    // The host answers the session manager; Qt would end the application on its behalf.
    QCoreApplication::setAttribute(Qt::AA_DisableSessionManager);
    QCoreApplication::setQuitLockEnabled(false);
    QGuiApplication::setDesktopFileName("org.vantrel.Vantrel");

    const NumericLocaleKeeper numericLocale;
    arguments_ = {programName_.data(), platformOption_.data(), platform_.data(), nullptr};
    application_.emplace(argumentCount_, arguments_.data());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QIcon::setThemeSearchPaths(QIcon::themeSearchPaths() << ownIcons());
    application_->installEventFilter(this);
}

QtGuest::~QtGuest() {
    if (flushSource_ != 0) {
        g_source_remove(flushSource_);
    }
    flushDeferredDeletions();
    // Its end runs after that of whoever draws: nothing of Qt is left by then.
    application_.reset();
}

void QtGuest::flushDeferredDeletions() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtGuest::flushSoon() {
    if (flushSource_ != 0) {
        return;
    }
    // Straight from GLib: inside one of Qt's own events, as a timer is, Qt from 6.8 on keeps what was put off outside.
    flushSource_ = g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer guest) -> gboolean {
            static_cast<QtGuest*>(guest)->flushSource_ = 0;
            flushDeferredDeletions();
            return G_SOURCE_REMOVE;
        },
        this, nullptr);
}

bool QtGuest::eventFilter(QObject* watched, QEvent* event) {
    // What Qt deletes later it has mostly just taken off the screen: menus, tool tips, drop-down lists.
    if (event->type() == QEvent::Hide && watched->isWidgetType() && static_cast<QWidget*>(watched)->isWindow()) {
        flushSoon();
    }
    return false;
}

}  // namespace vantrel::qt
