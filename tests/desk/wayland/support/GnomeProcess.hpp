#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tests/desk/status/BusClient.hpp"
#include "tests/desk/support/SessionBus.hpp"
#include "tests/desk/wayland/support/CompositorProcess.hpp"

namespace vantrel::desk {

struct GnomeOptions {
    std::vector<PrivateOutput> outputs;
    std::vector<std::string> keyboardLayouts{"us"};
    std::vector<std::string> keyboardOptions{};
    bool hasExtension = true;  ///< whether Vantrel's extension is installed
    bool extensionIsOfAnotherVersion = false;
    bool extensionIsOn = true;                               ///< whether the person has switched it on
    bool layoutIsInPixels = false;                           ///< Mutter's layout mode without fractional scaling
    std::vector<std::filesystem::path> furtherExtensions{};  ///< folders of what else is installed and on
};

/// A private GNOME Shell with a session bus and a system bus of its own. The first of its displays is the main one; its
/// layout has no negative places, so the main display may stand elsewhere than at (0, 0).
class GnomeProcess final : public CompositorProcess {
  public:
    explicit GnomeProcess(const GnomeOptions& options);
    /// Not after its buses.
    ~GnomeProcess() override { stop(); }

    /// Starts it anew after it was stopped or killed; its buses stay.
    void run();

    void arrange(const std::vector<PrivateOutput>& outputs) const override;

    [[nodiscard]] std::string busAddress() const override { return bus_.address(); }
    SessionBus& bus() { return bus_; }
    BusClient& client() { return *client_; }

    /// What a JavaScript expression comes to in the shell, as JSON. Throws when it cannot be evaluated.
    [[nodiscard]] std::string evaluate(const std::string& expression) const;

    /// As `gnome-extensions enable` and `disable` do for Vantrel's.
    void switchExtension(bool isOn) const;

    /// Whether Vantrel's extension serves.
    [[nodiscard]] bool hasExtension() const;

  private:
    void configure(const GnomeOptions& options) const;
    [[nodiscard]] bool comesToArrange(const std::vector<PrivateOutput>& outputs) const;

    SessionBus bus_;
    SessionBus systemBus_;
    std::unique_ptr<ChildProcess> loginService_;
    std::unique_ptr<BusClient> client_;
    std::vector<PrivateOutput> outputs_;
};

}  // namespace vantrel::desk
