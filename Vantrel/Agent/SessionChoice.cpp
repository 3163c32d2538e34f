#include "Vantrel/Agent/SessionChoice.hpp"

#ifdef VANTREL_WAYLAND
#include "Vantrel/Backends/Gnome/GnomeSession.hpp"
#include "Vantrel/Backends/Hyprland/HyprlandCompositor.hpp"
#include "Vantrel/Backends/Plasma/PlasmaCompositor.hpp"
#include "Vantrel/Backends/Sway/SwayCompositor.hpp"
#include "Vantrel/Backends/Wayfire/WayfireCompositor.hpp"
#include "Vantrel/Backends/Wayland/SessionSocket.hpp"
#include "Vantrel/Backends/Wayland/WaylandSession.hpp"
#endif
#ifdef VANTREL_X11
#include "Vantrel/Backends/X11/X11Session.hpp"
#endif

#include <chrono>
#include <cstdlib>
#include <thread>

namespace vantrel {

namespace {

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// `isThere` says whether a compositor answered at all.
std::unique_ptr<DisplaySession> connectToWayland(std::string& error, bool& isThere) {
#ifdef VANTREL_WAYLAND
    auto compositor = wayland::WaylandConnection::open(error);
    isThere = compositor != nullptr;
    if (!isThere) {
        return nullptr;
    }
    if (gnome::GnomeSession::isServedBy(*compositor)) {
        return gnome::GnomeSession::connect(std::move(compositor), error);
    }
    return wayland::WaylandSession::connect(std::move(compositor),
                                            {hyprland::HyprlandCompositor::find, sway::SwayCompositor::find,
                                             wayfire::WayfireCompositor::find, plasma::PlasmaCompositor::find},
                                            error);
#else
    isThere = false;
    error = "this is a Wayland session, and this Vantrel was built without Wayland";
    return nullptr;
#endif
}

std::unique_ptr<DisplaySession> connectToX11(std::string& error) {
#ifdef VANTREL_X11
    return x11::X11Session::connect(error);
#else
    error = "this is an X11 session, and this Vantrel was built without X11";
    return nullptr;
#endif
}

}  // namespace

std::unique_ptr<DisplaySession> chooseDisplaySession(std::string& error) {
    if (isSet("WAYLAND_DISPLAY") || isSet("WAYLAND_SOCKET")) {
        bool isThere = false;
        auto session = connectToWayland(error, isThere);
        // The X server of a session whose compositor lacks something would take warps and move nothing.
        if (session || isThere || !isSet("DISPLAY")) {
            return session;
        }
    } else if (!isSet("DISPLAY")) {
        error = "no display: neither WAYLAND_DISPLAY nor DISPLAY is set";
        return nullptr;
    }
    return connectToX11(error);
}

std::unique_ptr<DisplaySession> awaitDisplaySession(const std::string& windowingSystem, std::string& error) {
    constexpr std::chrono::seconds patience{10};
    constexpr std::chrono::milliseconds pause{100};
    const auto deadline = std::chrono::steady_clock::now() + patience;
    do {
        // A compositor's X server may outlive it for a while.
        if (auto session = chooseDisplaySession(error); session && session->windowingSystem() == windowingSystem) {
            return session;
        }
        std::this_thread::sleep_for(pause);
    } while (std::chrono::steady_clock::now() < deadline);
    if (error.empty()) {
        error = "the display server has not come back";
    }
    return nullptr;
}

bool handOverUnconnected(const std::vector<std::string>& urls) {
#ifdef VANTREL_WAYLAND
    return isSet("WAYLAND_DISPLAY") && wayland::SessionSocket::ofThisSession().send(urls);
#else
    static_cast<void>(urls);
    return false;
#endif
}

}  // namespace vantrel
