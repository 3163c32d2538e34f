#pragma once

#include "tests/desk/wayland/support/CompositorProcess.hpp"

namespace vantrel::desk {

/// A private weston, which lets no program read or move the pointer.
class WestonProcess final : public CompositorProcess {
  public:
    /// Under another program's name where one is given.
    explicit WestonProcess(const std::string& name = {}) : CompositorProcess("weston") {
        std::filesystem::path program = "weston";
        if (!name.empty()) {
            program = runtimeDirectory() / name;
            std::filesystem::copy_file("/usr/bin/weston", program);
        }
        start({program, "--backend=headless-backend.so", "--no-config", "--shell=kiosk-shell.so"}, 0);
    }
};

}  // namespace vantrel::desk
