// What the agent shows on the screen itself: short texts and, where no panel has one, the menu. A program of its own,
// because a font system in memory weighs more than the rest of the agent; the agent starts it when it is needed and
// ends it by hanging up. Its argument is the windowing system to connect to, "wayland" or else an X server.

#include <cstdlib>
#include <string_view>
#include <utility>

#include "helpers/messages/Overlay.hpp"
#ifdef VANTREL_WAYLAND
#include "helpers/messages/Wayland/WaylandStage.hpp"
#endif
#ifdef VANTREL_X11
#include "helpers/messages/X11/X11Stage.hpp"
#endif

namespace {

/// Null when the windowing system cannot be connected to, or is not served by this program as it was built.
std::unique_ptr<vantrel::overlay::Stage> connectTo([[maybe_unused]] std::string_view windowingSystem) {
#ifdef VANTREL_WAYLAND
    if (windowingSystem == "wayland") {
        return vantrel::overlay::WaylandStage::connect();
    }
#endif
#ifdef VANTREL_X11
    if (windowingSystem != "wayland") {
        return vantrel::overlay::X11Stage::connect();
    }
#endif
    return nullptr;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    auto stage = connectTo(argumentCount > 1 ? arguments[1] : "xcb");
    if (!stage) {
        // In silence: the agent, which has the same display, says so itself.
        return EXIT_FAILURE;
    }
    vantrel::Channel agent{vantrel::FileDescriptor(vantrel::Channel::helperDescriptor)};
    vantrel::overlay::Overlay(std::move(stage), std::move(agent)).run();
    return EXIT_SUCCESS;
}
