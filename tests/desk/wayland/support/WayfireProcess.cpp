#include "tests/desk/wayland/support/WayfireProcess.hpp"

#include <fstream>

namespace vantrel::desk {

WayfireProcess::WayfireProcess(const WayfireOptions& options) : CompositorProcess("wayfire") {
    std::ofstream file(configurationFile());
    file << "[core]\nplugins = session-lock " << options.plugins << "\nxwayland = false\n";
    int number = 0;
    for (const PrivateOutput& output : options.outputs) {
        file << "[output:HEADLESS-" << ++number << "]\nmode = " << output.mode << "\nposition = " << output.x << ", "
             << output.y << "\nscale = " << output.scale << "\ntransform = " << output.transform << '\n';
    }
    file << options.configuration << std::flush;
    start({"wayfire", "-c", configurationFile()}, options.outputs.size());
    arrange(options.outputs);
}

void WayfireProcess::reload() const {
    // It watches the file.
    std::ofstream(configurationFile(), std::ios::app) << "\n";
}

}  // namespace vantrel::desk
