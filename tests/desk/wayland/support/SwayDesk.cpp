#include "tests/desk/wayland/support/SwayDesk.hpp"

#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>
#include <stdexcept>

#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel::desk {

SwayOptions SwayDesk::twoDisplays(const std::string& configuration) {
    return {.outputs = {{.mode = "640x480"}, {.mode = "400x300", .x = -400, .y = 100}},
            .configuration = configuration,
            .files = {}};
}

SwayDesk::SwayDesk(const SwayOptions& options, const std::string& keyboardLayouts, const std::string& keyboardOptions)
    : sway_(options),
      control_(sway_.controlSocket()),
      person_(sway_.runtimeDirectory() / sway_.displayName(), keyboardLayouts, keyboardOptions),
      environment_(Environment::minimal()) {
    home_.enter(environment_);
    environment_.set("XDG_RUNTIME_DIR", sway_.runtimeDirectory().native());
    environment_.set("WAYLAND_DISPLAY", sway_.displayName());
    environment_.set("SWAYSOCK", sway_.controlSocket().native());
    // Also keeps GLib from looking for a bus elsewhere or starting one.
    environment_.set("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    defaults().writeText("animation", "none");
    defaults().writeInteger("soundEnabled", 0);
}

std::unique_ptr<AgentProcess> SwayDesk::startProgram(const std::vector<std::string>& arguments) {
    const auto errors = home_.path() / ("stderr" + std::to_string(++programs_));
    return std::make_unique<AgentProcess>(environment_, errors, arguments);
}

std::unique_ptr<AgentProcess> SwayDesk::startAgent() {
    auto agent = startProgram();
    waitUntil([&] { return !agent->isRunning() || isServed(); });
    // Of a foreign scheme: the agent takes it, when it has launched, and does nothing about it.
    const auto answer = agent->isRunning() ? startProgram({"about:blank"})->waitForExit() : std::nullopt;
    if (answer != ExitStatus{.code = 0, .signal = std::nullopt} || !agent->isRunning()) {
        throw std::runtime_error("the agent does not become ready: " + agent->standardError());
    }
    return agent;
}

bool SwayDesk::isServed() const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const auto socketFile = sway_.runtimeDirectory() / ("vantrel-" + sway_.displayName() + ".sock");
    std::strncpy(address.sun_path, socketFile.c_str(), sizeof address.sun_path - 1);
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    return connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

bool SwayDesk::jump(const Chord& chord, LayoutPoint target) {
    person_.type(chord);
    return person_.waitFor(target, std::chrono::seconds(10));
}

}  // namespace vantrel::desk
