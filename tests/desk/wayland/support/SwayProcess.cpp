#include "tests/desk/wayland/support/SwayProcess.hpp"

#include <unistd.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "tests/desk/wayland/support/SwayControl.hpp"

namespace vantrel::desk {

namespace {

constexpr uid_t nobody = 65534;

std::string configurationText(const SwayOptions& options) {
    std::ostringstream text;
    // An X server of its own would take longer to start than everything else.
    text << "xwayland disable\n";
    int number = 0;
    for (const SwayOutput& output : options.outputs) {
        text << "output HEADLESS-" << ++number << " mode " << output.mode << " position " << output.x << ' ' << output.y
             << " scale " << output.scale << " transform " << output.transform << '\n';
    }
    text << options.configuration;
    return text.str();
}

/// The display's name.
std::string findDisplay(const std::filesystem::path& directory) {
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        const std::string name = entry.path().filename();
        if (name.starts_with("wayland-") && entry.is_socket()) {
            return name;
        }
    }
    return {};
}

bool answersAt(const std::filesystem::path& controlSocket) {
    try {
        SwayControl(controlSocket).ask(SwayControl::getOutputs);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

}  // namespace

SwayProcess::SwayProcess(const SwayOptions& options) {
    std::ofstream(configurationFile()) << configurationText(options);
    for (const auto& [name, text] : options.files) {
        std::ofstream(directory_.path() / name) << text;
    }
    ChildProcessOptions child;
    child.arguments = {"sway", "-c", configurationFile()};
    child.environment.set("HOME", directory_.path().native());
    child.environment.set("XDG_RUNTIME_DIR", directory_.path().native());
    child.environment.set("WLR_BACKENDS", "headless");
    child.environment.set("WLR_RENDERER", "pixman");
    child.environment.set("WLR_LIBINPUT_NO_DEVICES", "1");
    child.environment.set("WLR_HEADLESS_OUTPUTS", std::to_string(options.outputs.size()));
    child.standardError = directory_.path() / "log";
    if (geteuid() == 0) {
        child.user = nobody;
        if (chown(directory_.path().c_str(), nobody, nobody) != 0) {
            throw std::runtime_error("cannot give a directory to the compositor's user");
        }
    }
    process_ = std::make_unique<ChildProcess>(child);
    // Not before it answers: a request to end that came earlier would be forgotten.
    waitUntil([&] { return answersAt(controlSocket()) || !process_->isRunning(); });
    displayName_ = findDisplay(directory_.path());
    if (displayName_.empty() || !process_->isRunning()) {
        std::ostringstream log;
        log << std::ifstream(child.standardError).rdbuf();
        throw std::runtime_error("no private compositor (sway) could be started here:\n" + log.str());
    }
}

std::filesystem::path SwayProcess::controlSocket() const {
    const uid_t user = geteuid() == 0 ? nobody : geteuid();
    return directory_.path() / ("sway-ipc." + std::to_string(user) + "." + std::to_string(processId()) + ".sock");
}

}  // namespace vantrel::desk
