#include "tests/desk/support/XServer.hpp"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace vantrel::desk {

namespace {

constexpr const char* configuration = R"(Section "Device"
    Identifier "Card"
    Driver "dummy"
    VideoRam 256000
EndSection
Section "Monitor"
    Identifier "Monitor"
    HorizSync 1-2000
    VertRefresh 1-2000
EndSection
Section "Screen"
    Identifier "Screen"
    Device "Card"
    Monitor "Monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Virtual 8192 4096
    EndSubSection
EndSection
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoAddGPU" "false"
EndSection
)";

/// The server itself: /usr/bin/Xorg may be a wrapper that insists on a console.
std::string serverProgram() {
    for (const char* path : {"/usr/lib/xorg/Xorg", "/usr/libexec/Xorg"}) {
        if (access(path, X_OK) == 0) {
            return path;
        }
    }
    return "Xorg";
}

/// Reads the display number that the server writes once it listens; empty when none comes.
std::string readDisplayNumber(int descriptor, ChildProcess& server) {
    std::string text;
    const bool complete = waitUntil([&] {
        pollfd ready{.fd = descriptor, .events = POLLIN, .revents = 0};
        if (poll(&ready, 1, 0) > 0) {
            char buffer[16];
            const auto count = read(descriptor, buffer, sizeof buffer);
            if (count > 0) {
                text.append(buffer, static_cast<std::size_t>(count));
            }
        }
        return text.ends_with('\n') || !server.isRunning();
    });
    if (!complete || !text.ends_with('\n')) {
        return {};
    }
    text.pop_back();
    return text;
}

}  // namespace

XServer::XServer() : directory_("xserver") {
    const auto configurationFile = directory_.path() / "xorg.conf";
    std::ofstream(configurationFile) << configuration;

    int pipeEnds[2];
    if (pipe2(pipeEnds, O_CLOEXEC) != 0) {
        throw std::runtime_error("cannot create a pipe");
    }
    ChildProcessOptions options;
    // A seat of its own keeps the server away from the machine's console and input devices.
    options.arguments = {
        serverProgram(),           "-displayfd", std::to_string(pipeEnds[1]), "-config",  configurationFile, "-logfile",
        directory_.path() / "log", "-seat",      "vantrel-private",           "-noreset", "-nolisten",       "tcp"};
    options.standardError = directory_.path() / "stderr";
    options.keptDescriptor = pipeEnds[1];
    process_ = std::make_unique<ChildProcess>(options);
    close(pipeEnds[1]);
    const auto number = readDisplayNumber(pipeEnds[0], *process_);
    close(pipeEnds[0]);
    if (number.empty()) {
        throw std::runtime_error("no private X server (Xorg with the dummy driver) could be started here:\n" +
                                 endOfLog());
    }
    displayName_ = ":" + number;
}

std::string XServer::endOfLog() const {
    constexpr std::size_t enough = 2000;
    std::ostringstream text;
    text << std::ifstream(directory_.path() / "stderr").rdbuf();
    const auto all = text.str();
    return all.size() > enough ? all.substr(all.size() - enough) : all;
}

}  // namespace vantrel::desk
