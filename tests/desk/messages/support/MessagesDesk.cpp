#include "tests/desk/messages/support/MessagesDesk.hpp"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include "Vantrel/Desktop/Helpers/HelperProgram.hpp"
#include "tests/desk/support/HelperProcess.hpp"

namespace vantrel::desk {

SwayOptions MessagesDesk::usualOptions() {
    return {.outputs = usualOutputs(),
            .configuration = "focus_follows_mouse no\nfor_window [app_id=typing] floating enable\n",
            .files = {}};
}

MessagesDesk::MessagesDesk(const SwayOptions& options, const std::string& layouts)
    : ScreenDesk(std::make_unique<SwayDesk>(options, layouts)) {
    // The program inherits them from this process, which has nothing else to do with a display.
    setenv("XDG_RUNTIME_DIR", desk.sway().runtimeDirectory().c_str(), 1);
    setenv("WAYLAND_DISPLAY", desk.sway().displayName().c_str(), 1);
    unsetenv("DISPLAY");
}

void MessagesDesk::startOverlay() {
    agent = desktop::startHelper(desktop::helperProgram("vantrel-overlay"), "wayland");
    if (!agent.isOpen()) {
        throw std::runtime_error("the program for messages does not start");
    }
}

void MessagesDesk::killOverlay(pid_t parent) {
    const auto overlay = overlayOf(parent);
    if (!overlay) {
        throw std::runtime_error("there is no program for messages");
    }
    kill(*overlay, SIGKILL);
}

std::unique_ptr<TypingWindow> MessagesDesk::openWindow() {
    desk.control().run(std::string("focus output ") + mainOutput);
    auto window = std::make_unique<TypingWindow>(socket());
    const bool isSeen = waitUntil([this] {
        const auto pixels = camera.take(mainOutput).pixels;
        return std::any_of(pixels.begin(), pixels.end(),
                           [](std::uint32_t pixel) { return (pixel & 0xFFFFFF) == TypingWindow::color; });
    });
    if (!isSeen) {
        throw std::runtime_error("the window is not seen");
    }
    return window;
}

bool MessagesDesk::unplug(const std::string& output) {
    const std::string answer = desk.control().ask(SwayControl::runCommand, "output " + output + " unplug");
    return answer.find("Invalid output subcommand") == std::string::npos;
}

void MessagesDesk::putPointer(LayoutPoint point) {
    pointer = point;
    // sway counts from the corner of the rectangle around all displays.
    desk.control().run("seat seat0 cursor set " + std::to_string(point.x - secondCorner.x) + " " +
                       std::to_string(point.y));
    desk.person().synchronise();
}

}  // namespace vantrel::desk
