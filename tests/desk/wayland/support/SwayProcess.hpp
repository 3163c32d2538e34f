#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tests/desk/wayland/support/CompositorProcess.hpp"

namespace vantrel::desk {

struct SwayOptions {
    std::vector<PrivateOutput> outputs;
    std::string configuration;                 ///< what else a person has in the configuration
    std::map<std::string, std::string> files;  ///< beside the configuration's file, by name
};

/// A private sway.
class SwayProcess final : public CompositorProcess {
  public:
    explicit SwayProcess(const SwayOptions& options);

    /// What goes into SWAYSOCK.
    [[nodiscard]] std::filesystem::path controlSocket() const;

    [[nodiscard]] std::filesystem::path configurationFile() const { return runtimeDirectory() / "config"; }
};

}  // namespace vantrel::desk
