#include "tests/desk/wayland/support/CompositorProcess.hpp"

#include <unistd.h>
#include <wayland-client.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace vantrel::desk {

namespace {

constexpr uid_t nobody = 65534;

/// The display's name; empty while there is none.
std::string findDisplay(const std::filesystem::path& directory) {
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        std::string name = entry.path().filename();
        if (name.starts_with("wayland-") && entry.is_socket()) {
            return name;
        }
    }
    return {};
}

bool answersAt(const std::filesystem::path& socket) {
    wl_display* const display = wl_display_connect(socket.c_str());
    if (display == nullptr) {
        return false;
    }
    const bool isAnswered = wl_display_roundtrip(display) >= 0;
    wl_display_disconnect(display);
    return isAnswered;
}

}  // namespace

std::string CompositorProcess::outputName(std::size_t number) {
    return "HEADLESS-" + std::to_string(number);
}

std::size_t PrivateOutput::transformNumber() const {
    constexpr std::array names{"normal", "90", "180", "270", "flipped", "flipped-90", "flipped-180", "flipped-270"};
    return static_cast<std::size_t>(std::find(names.begin(), names.end(), transform) - names.begin());
}

uid_t CompositorProcess::user() {
    return geteuid() == 0 ? nobody : geteuid();
}

void CompositorProcess::giveAway() const {
    if (geteuid() != 0) {
        return;
    }
    bool isDone = chown(directory_.path().c_str(), nobody, nobody) == 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory_.path())) {
        isDone = lchown(entry.path().c_str(), nobody, nobody) == 0 && isDone;
    }
    if (!isDone) {
        throw std::runtime_error("cannot give a directory to the compositor's user");
    }
}

void CompositorProcess::start(std::vector<std::string> arguments, std::size_t outputs,
                              const std::map<std::string, std::string>& environment) {
    const std::string program = arguments.front();
    ChildProcessOptions child;
    child.arguments = std::move(arguments);
    child.environment.set("HOME", directory_.path().native());
    child.environment.set("XDG_RUNTIME_DIR", directory_.path().native());
    child.environment.set("WLR_BACKENDS", "headless");
    child.environment.set("WLR_RENDERER", "pixman");
    child.environment.set("WLR_LIBINPUT_NO_DEVICES", "1");
    child.environment.set("WLR_HEADLESS_OUTPUTS", std::to_string(outputs));
    for (const auto& [name, value] : environment) {
        child.environment.set(name, value);
    }
    child.standardOutput = directory_.path() / "log";
    child.standardError = directory_.path() / "log";
    if (geteuid() == 0) {
        child.user = user();
        child.seesEverybodysPrograms = showsPrograms_;
        giveAway();
    }
    process_ = std::make_unique<ChildProcess>(child);
    // Not before it answers: a request to end that came earlier would be forgotten.
    waitUntil([&] {
        displayName_ = findDisplay(directory_.path());
        return (!displayName_.empty() && answersAt(socket())) || !process_->isRunning();
    });
    if (displayName_.empty() || !process_->isRunning()) {
        std::ostringstream log;
        log << std::ifstream(child.standardError).rdbuf();
        throw std::runtime_error("no private compositor (" + program + ") could be started here:\n" + log.str());
    }
}

void CompositorProcess::arrange(const std::vector<PrivateOutput>& outputs) const {
    std::vector<std::string> arguments;
    std::size_t number = 0;
    for (const PrivateOutput& output : outputs) {
        const std::string place = std::to_string(output.x) + "," + std::to_string(output.y);
        arguments.insert(arguments.end(), {"--output", outputName(++number), "--on", "--custom-mode", output.mode,
                                           "--pos", place, "--scale", output.scale, "--transform", output.transform});
    }
    runDisplayProgram(std::move(arguments));
}

bool CompositorProcess::switchOff(int number) const {
    try {
        runDisplayProgram({"--output", outputName(static_cast<std::size_t>(number)), "--off"});
    } catch (const std::runtime_error&) {
        return false;
    }
    return true;
}

void CompositorProcess::runDisplayProgram(std::vector<std::string> arguments) const {
    Environment environment = Environment::minimal();
    environment.set("XDG_RUNTIME_DIR", directory_.path().native());
    environment.set("WAYLAND_DISPLAY", displayName_);
    arguments.insert(arguments.begin(), "wlr-randr");
    runProgram(arguments, environment);
}

}  // namespace vantrel::desk
