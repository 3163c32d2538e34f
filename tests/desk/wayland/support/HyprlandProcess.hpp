#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/desk/wayland/support/CompositorProcess.hpp"

namespace vantrel::desk {

struct HyprlandOptions {
    std::vector<PrivateOutput> outputs;
    std::string configuration;  ///< what else a person has in the configuration, in Lua
};

/// A private Hyprland, of those that are configured in Lua.
class HyprlandProcess final : public CompositorProcess {
  public:
    explicit HyprlandProcess(const HyprlandOptions& options);

    void arrange(const std::vector<PrivateOutput>& outputs) const override;
    [[nodiscard]] bool switchOff(int number) const override;

    /// What goes into HYPRLAND_INSTANCE_SIGNATURE.
    [[nodiscard]] const std::string& signature() const { return signature_; }
    /// The directory with its sockets.
    [[nodiscard]] std::filesystem::path instance() const { return runtimeDirectory() / "hypr" / signature_; }

    /// Has it answer a request, as hyprctl does.
    [[nodiscard]] std::string ask(std::string_view request) const;
    /// Has it carry out what stands in Lua; throws when it refuses.
    void evaluate(const std::string& lua) const;

    /// Writes what else stands in the configuration anew, and has it read.
    void configure(const std::string& configuration) const;
    void reload() const { static_cast<void>(ask("/reload")); }

  private:
    void writeConfiguration(const std::string& configuration) const;
    void waitUntilArranged(const std::vector<PrivateOutput>& outputs) const;

    std::string monitors_;  ///< the lines of the configuration that tell of the displays
    std::string signature_;
};

}  // namespace vantrel::desk
