// A program with nothing but a status item, driven by lines on its standard input, which tells on its standard output
// what was chosen in the menu. The tests run it beside real panels, with the number of a socket for both as argument.
//
//   title TEXT     tool-tip TEXT     points N (a menu for N saved points)     rebuild N (that often; answers "rebuilt")
//   rows N (the menu's first N rows)     visible (answers "visible yes" or "visible no")     popup     quit

#include <glib-unix.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <utility>

#include "Vantrel/Backends/X11/Tray/TrayItemPresenter.hpp"
#include "Vantrel/Desktop/Helpers/HelperProgram.hpp"
#include "Vantrel/Desktop/StatusItem/DesktopStatusBar.hpp"

namespace {

using vantrel::Menu;
using vantrel::MenuItem;

void report(const std::string& line) {
    std::cout << line << std::endl;
}

MenuItem command(const std::string& title, bool isEnabled = true, const std::string& keyEquivalent = {}) {
    MenuItem item;
    item.title = title;
    item.isEnabled = isEnabled;
    item.keyEquivalent = keyEquivalent;
    item.action = [title] { report("chosen " + title); };
    return item;
}

MenuItem information(const std::string& title) {
    MenuItem item;
    item.title = title;
    item.isEnabled = false;
    return item;
}

MenuItem separator() {
    MenuItem item;
    item.isSeparator = true;
    return item;
}

Menu sampleMenu(int points) {
    const std::string count = points == 0 ? "none" : std::to_string(points) + (points == 1 ? " point" : " points");
    return {information("Vantrel"),
            separator(),
            command("Teleport Now"),
            command("Next Display"),
            command("Previous Display"),
            separator(),
            command("Save Current Point"),
            command("Teleport Saved Point", points > 0),
            command("Clear Saved Points", points > 0),
            separator(),
            command("Settings...", true, ","),
            information("Shortcut: Hyper + D"),
            information("Mode: Automatic: displays"),
            information("Saved Points: " + count),
            separator(),
            command("Quit Vantrel", true, "q")};
}

class Probe {
  public:
    explicit Probe(GMainLoop* loop) : loop_(loop), item_(statusBar_.statusItem(-1)) {}

    void start() {
        item_->button()->setTitle("Vantrel");
        item_->button()->setToolTip("Vantrel");
        item_->setMenu(sampleMenu(0));
        if (getenv("DBUS_SESSION_BUS_ADDRESS") != nullptr) {
            g_bus_get(G_BUS_TYPE_SESSION, nullptr, connected, this);
        }
        g_unix_fd_add(STDIN_FILENO, G_IO_IN, readable, this);
        report("ready");
    }

  private:
    static void connected(GObject* /*source*/, GAsyncResult* result, gpointer data) {
        GDBusConnection* bus = g_bus_get_finish(result, nullptr);
        if (bus != nullptr) {
            g_dbus_connection_set_exit_on_close(bus, FALSE);
            static_cast<Probe*>(data)->statusBar_.setSessionBus(bus);
            g_object_unref(bus);
        }
    }

    static gboolean readable(gint descriptor, GIOCondition /*condition*/, gpointer data) {
        auto& probe = *static_cast<Probe*>(data);
        char buffer[4096];
        const ssize_t length = read(descriptor, buffer, sizeof buffer);
        if (length <= 0) {
            g_main_loop_quit(probe.loop_);
            return G_SOURCE_REMOVE;
        }
        probe.input_.append(buffer, static_cast<std::size_t>(length));
        for (auto end = probe.input_.find('\n'); end != std::string::npos; end = probe.input_.find('\n')) {
            probe.obey(probe.input_.substr(0, end));
            probe.input_.erase(0, end + 1);
        }
        return G_SOURCE_CONTINUE;
    }

    void obey(const std::string& line) {
        const auto space = line.find(' ');
        const std::string word = line.substr(0, space);
        const std::string rest = space == std::string::npos ? std::string() : line.substr(space + 1);
        if (word == "title") {
            item_->button()->setTitle(rest);
        } else if (word == "tool-tip") {
            item_->button()->setToolTip(rest);
        } else if (word == "points") {
            item_->setMenu(sampleMenu(std::stoi(rest)));
        } else if (word == "rows") {
            Menu menu = sampleMenu(0);
            menu.resize(static_cast<std::size_t>(std::stoi(rest)));
            item_->setMenu(menu);
        } else if (word == "rebuild") {
            remainingRebuilds_ = std::stoi(rest);
            g_idle_add(rebuild, this);
        } else if (word == "visible") {
            report(item_->isVisible() ? "visible yes" : "visible no");
        } else if (word == "popup") {
            item_->popUpMenu();
        } else if (word == "quit") {
            g_main_loop_quit(loop_);
        }
    }

    // Ten in each turn of the loop, as a burst of events would bring them.
    static gboolean rebuild(gpointer data) {
        auto& probe = *static_cast<Probe*>(data);
        for (int count = 0; count < 10; ++count) {
            probe.item_->setMenu(sampleMenu(probe.remainingRebuilds_-- % 3));
        }
        if (probe.remainingRebuilds_ > 0) {
            return G_SOURCE_CONTINUE;
        }
        report("rebuilt");
        return G_SOURCE_REMOVE;
    }

    GMainLoop* loop_;
    int remainingRebuilds_ = 0;
    vantrel::desktop::DesktopStatusBar statusBar_{
        [](auto events) { return std::make_unique<vantrel::x11::TrayItemPresenter>(std::move(events)); },
        [] { return vantrel::desktop::startHelper(vantrel::desktop::helperProgram("vantrel-overlay")); }};
    std::unique_ptr<vantrel::StatusItem> item_;
    std::string input_;
};

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount == 2) {
        const int socket = std::stoi(arguments[1]);
        dup2(socket, STDIN_FILENO);
        dup2(socket, STDOUT_FILENO);
        close(socket);
    }
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    {
        Probe probe(loop);
        probe.start();
        g_main_loop_run(loop);
    }
    g_main_loop_unref(loop);
    return EXIT_SUCCESS;
}
