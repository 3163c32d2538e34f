#include "tests/desk/wayland/support/LabwcProcess.hpp"

#include <csignal>
#include <fstream>

namespace vantrel::desk {

LabwcProcess::LabwcProcess(const LabwcOptions& options) : CompositorProcess("labwc") {
    writeConfiguration(options.keyboard);
    std::ofstream(runtimeDirectory() / "autostart") << options.autostart;
    start({"labwc", "-C", runtimeDirectory()}, options.outputs.size());
    // Its configuration knows nothing of displays.
    arrange(options.outputs);
}

void LabwcProcess::reconfigure(const std::string& keyboard) const {
    writeConfiguration(keyboard);
    kill(processId(), SIGHUP);
}

void LabwcProcess::writeConfiguration(const std::string& keyboard) const {
    std::ofstream(runtimeDirectory() / "rc.xml")
        << "<?xml version=\"1.0\"?>\n<labwc_config>\n<keyboard>" << keyboard << "</keyboard>\n</labwc_config>\n";
}

}  // namespace vantrel::desk
