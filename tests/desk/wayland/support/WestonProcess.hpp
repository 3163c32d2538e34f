#pragma once

#include "tests/desk/wayland/support/CompositorProcess.hpp"

namespace vantrel::desk {

/// A private weston, which lets no program read or move the pointer.
class WestonProcess final : public CompositorProcess {
  public:
    WestonProcess() : CompositorProcess("weston") {
        start({"weston", "--backend=headless-backend.so", "--no-config", "--shell=kiosk-shell.so"}, 0);
    }
};

}  // namespace vantrel::desk
