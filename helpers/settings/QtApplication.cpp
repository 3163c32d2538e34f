#include "helpers/settings/QtApplication.hpp"

#include <QDir>
#include <QIcon>
#include <QLibraryInfo>
#include <QPluginLoader>
#include <QStringList>

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
    QString reason = "no such file";
    for (const QString& folder : platformPluginFolders()) {
        // One windowing system may have several: libqwayland-generic.so, libqwayland-egl.so.
        for (const QString& file : QDir(folder).entryList({"libq" + name + ".so", "libq" + name + "-*.so"})) {
            QPluginLoader plugin(folder + "/" + file);
            if (plugin.load()) {
                return {};
            }
            reason = plugin.errorString();
        }
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
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + "/" VANTREL_DATA_FROM_LIBEXEC "/icons");
}

}  // namespace

std::unique_ptr<QtApplication> QtApplication::start(const std::string& windowingSystem, std::string& problem) {
    problem = pluginProblem(windowingSystem);
    if (problem.empty()) {
        problem = displayProblem(windowingSystem);
    }
    if (!problem.empty()) {
        return nullptr;
    }
    // GLib was in the process first, so it clears a thread that ends before Qt does; Qt's own threads with GLib, from
    // 6.8 on, then find their context gone and make GLib complain on stderr.
    qputenv("QT_NO_THREADED_GLIB", "1");
    // Started by the agent, which comes with the session: not to be restored by the session manager.
    QCoreApplication::setAttribute(Qt::AA_DisableSessionManager);
    QCoreApplication::setQuitLockEnabled(false);
    QGuiApplication::setDesktopFileName("org.vantrel.Vantrel");
    return std::unique_ptr<QtApplication>(new QtApplication(windowingSystem));  // NOLINT: the constructor is private
}

QtApplication::QtApplication(const std::string& windowingSystem)
    : platform_(windowingSystem),
      arguments_{programName_.data(), platformOption_.data(), platform_.data(), nullptr},
      application_(argumentCount_, arguments_.data()) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QIcon::setThemeSearchPaths(QIcon::themeSearchPaths() << ownIcons());
}

}  // namespace vantrel::qt
