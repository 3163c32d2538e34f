#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/desk/wayland/support/CompositorProcess.hpp"

namespace vantrel::desk {

struct LabwcOptions {
    std::vector<PrivateOutput> outputs;
    std::string keyboard;   ///< what a person has in the <keyboard> element of rc.xml
    std::string autostart;  ///< what a person has started with the session
};

/// A private labwc.
class LabwcProcess final : public CompositorProcess {
  public:
    explicit LabwcProcess(const LabwcOptions& options);

    /// Writes the <keyboard> element of rc.xml anew and has labwc read it, as `labwc --reconfigure` does.
    void reconfigure(const std::string& keyboard) const;

  private:
    void writeConfiguration(const std::string& keyboard) const;
};

}  // namespace vantrel::desk
