#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

/// A private weston, which lets no program read or move the pointer. It runs as an ordinary user also where the tests
/// run as root.
class WestonProcess {
  public:
    /// Starts it and waits until it accepts clients; throws when it does not come up.
    WestonProcess();

    /// What goes into XDG_RUNTIME_DIR.
    [[nodiscard]] const std::filesystem::path& runtimeDirectory() const { return directory_.path(); }
    /// What goes into WAYLAND_DISPLAY.
    static constexpr auto displayName = "wayland-weston";

  private:
    TemporaryDirectory directory_{"weston"};
    std::unique_ptr<ChildProcess> process_;
};

}  // namespace vantrel::desk
