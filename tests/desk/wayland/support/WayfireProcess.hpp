#pragma once

#include <string>
#include <vector>

#include "tests/desk/wayland/support/CompositorProcess.hpp"

namespace vantrel::desk {

struct WayfireOptions {
    std::vector<PrivateOutput> outputs;
    std::string plugins = "ipc ipc-rules command";
    std::string configuration;  ///< what else a person has in the configuration
};

/// A private wayfire.
class WayfireProcess final : public CompositorProcess {
  public:
    explicit WayfireProcess(const WayfireOptions& options);

    /// Has it read its configuration again.
    void reload() const;

  private:
    [[nodiscard]] std::filesystem::path configurationFile() const { return runtimeDirectory() / "wayfire.ini"; }
};

}  // namespace vantrel::desk
