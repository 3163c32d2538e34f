#include "tests/desk/wayland/support/SwayProcess.hpp"

#include <fstream>
#include <sstream>

namespace vantrel::desk {

namespace {

std::string configurationText(const SwayOptions& options) {
    std::ostringstream text;
    // An X server of its own would take longer to start than everything else.
    text << "xwayland disable\n";
    int number = 0;
    for (const PrivateOutput& output : options.outputs) {
        text << "output HEADLESS-" << ++number << " mode " << output.mode << " position " << output.x << ' ' << output.y
             << " scale " << output.scale << " transform " << output.transform << '\n';
    }
    text << options.configuration;
    return text.str();
}

}  // namespace

SwayProcess::SwayProcess(const SwayOptions& options) : CompositorProcess("sway") {
    std::ofstream(configurationFile()) << configurationText(options);
    for (const auto& [name, text] : options.files) {
        std::ofstream(runtimeDirectory() / name) << text;
    }
    start({"sway", "-c", configurationFile()}, options.outputs.size());
}

std::filesystem::path SwayProcess::controlSocket() const {
    return runtimeDirectory() / ("sway-ipc." + std::to_string(user()) + "." + std::to_string(processId()) + ".sock");
}

}  // namespace vantrel::desk
