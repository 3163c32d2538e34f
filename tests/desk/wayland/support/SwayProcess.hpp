#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

/// A display of a private compositor, as its configuration has it.
struct SwayOutput {
    std::string mode;  ///< "1512x982"
    int x = 0;         ///< of its top-left corner in the layout, in points
    int y = 0;
    std::string scale = "1";
    std::string transform = "normal";  ///< or "90", "flipped-180"
};

struct SwayOptions {
    std::vector<SwayOutput> outputs;           ///< named HEADLESS-1 and so on
    std::string configuration;                 ///< what else a person has in the configuration
    std::map<std::string, std::string> files;  ///< beside the configuration's file, by name
};

/// A private sway without screens and input devices. It runs as an ordinary user also where the tests run as root,
/// because a compositor does not belong there.
class SwayProcess {
  public:
    /// Starts it and waits until it accepts clients; throws, with the end of its log, when it does not come up.
    explicit SwayProcess(const SwayOptions& options);
    ~SwayProcess() = default;
    SwayProcess(const SwayProcess&) = delete;
    SwayProcess& operator=(const SwayProcess&) = delete;

    /// What goes into XDG_RUNTIME_DIR.
    [[nodiscard]] const std::filesystem::path& runtimeDirectory() const { return directory_.path(); }
    /// What goes into WAYLAND_DISPLAY.
    [[nodiscard]] const std::string& displayName() const { return displayName_; }
    /// What goes into SWAYSOCK.
    [[nodiscard]] std::filesystem::path controlSocket() const;

    [[nodiscard]] std::filesystem::path configurationFile() const { return directory_.path() / "config"; }
    [[nodiscard]] pid_t processId() const { return process_->processId(); }

    /// Keeps it from answering anybody, until thaw().
    void freeze() { process_->sendSignal(SIGSTOP); }
    void thaw() { process_->sendSignal(SIGCONT); }

    /// Takes it away from its clients.
    void stop() { process_->end(); }

  private:
    TemporaryDirectory directory_{"sway"};
    std::unique_ptr<ChildProcess> process_;
    std::string displayName_;
};

}  // namespace vantrel::desk
