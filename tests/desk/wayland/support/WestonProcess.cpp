#include "tests/desk/wayland/support/WestonProcess.hpp"

#include <unistd.h>
#include <wayland-client.h>

#include <stdexcept>

namespace vantrel::desk {

WestonProcess::WestonProcess() {
    ChildProcessOptions child;
    child.arguments = {"weston", "--backend=headless-backend.so", std::string("--socket=") + displayName, "--no-config",
                       "--shell=kiosk-shell.so"};
    child.environment.set("XDG_RUNTIME_DIR", directory_.path().native());
    child.environment.set("HOME", directory_.path().native());
    child.standardOutput = directory_.path() / "log";
    child.standardError = directory_.path() / "log";
    if (geteuid() == 0) {
        constexpr uid_t nobody = 65534;
        child.user = nobody;
        if (chown(directory_.path().c_str(), nobody, nobody) != 0) {
            throw std::runtime_error("cannot give a directory to the compositor's user");
        }
    }
    process_ = std::make_unique<ChildProcess>(child);
    const bool isUp = waitUntil([&] {
        wl_display* const display = wl_display_connect((directory_.path() / displayName).c_str());
        if (display != nullptr) {
            wl_display_disconnect(display);
        }
        return display != nullptr || !process_->isRunning();
    });
    if (!isUp || !process_->isRunning()) {
        throw std::runtime_error("no private compositor (weston) could be started here");
    }
}

}  // namespace vantrel::desk
