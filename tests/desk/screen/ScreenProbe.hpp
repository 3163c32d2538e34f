#pragma once

#include <glib.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "Vantrel/Backends/X11/X11Session.hpp"
#include "VantrelCore/DisplaySnapshot.hpp"

namespace vantrel::desk {

/// The X11 side of the agent on its own, without a loop unless turn() is called.
class ScreenProbe {
  public:
    explicit ScreenProbe(const std::string& displayName) {
        setenv("DISPLAY", displayName.c_str(), 1);
        std::string error;
        platform_ = x11::X11Session::connect(error);
        if (!platform_) {
            throw std::runtime_error(error);
        }
        platform_->attach({.ended = [](const std::string&) {}, .opened = [](const std::vector<std::string>&) {}});
    }

    /// The displays, asked for as a jump does.
    std::vector<DisplaySnapshot> displays() {
        DisplayServices& services = platform_->displays();
        std::uint32_t count = 0;
        services.CGGetActiveDisplayList({}, count);
        std::vector<CGDirectDisplayID> ids(count);
        if (count > 0) {
            services.CGGetActiveDisplayList(ids, count);
        }
        std::vector<DisplaySnapshot> displays;
        for (const CGDirectDisplayID id : ids) {
            displays.emplace_back(id, services.CGDisplayBounds(id));
        }
        return displays;
    }

    CGPoint pointer() {
        const auto event = platform_->pointerReader().CGEventCreate();
        return event ? platform_->pointerReader().CGEventGetLocation(*event) : CGPoint{-99999, -99999};
    }

    void warp(double x, double y) { platform_->pointerWarper().CGWarpMouseCursorPosition({x, y}); }

    /// Gives waiting events their turn, as the loop does between two jumps.
    void turn() {
        do {
        } while (g_main_context_iteration(nullptr, FALSE) != 0);
    }

  private:
    std::unique_ptr<x11::X11Session> platform_;
};

}  // namespace vantrel::desk
