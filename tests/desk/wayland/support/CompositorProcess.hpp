#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

/// A display of a private compositor.
struct PrivateOutput {
    std::string mode;  ///< "1512x982"
    int x = 0;         ///< of its top-left corner in the layout, in points
    int y = 0;
    std::string scale = "1";
    std::string transform = "normal";  ///< or "90", "flipped-180"

    /// The transform as Wayland's protocols count them.
    [[nodiscard]] std::size_t transformNumber() const;
};

/// A private compositor without screens and input devices. It runs as an ordinary user also where the tests run as
/// root, because a compositor does not belong there.
class CompositorProcess {
  public:
    virtual ~CompositorProcess() = default;
    CompositorProcess(const CompositorProcess&) = delete;
    CompositorProcess& operator=(const CompositorProcess&) = delete;

    /// What goes into XDG_RUNTIME_DIR. It is also the compositor's home.
    [[nodiscard]] const std::filesystem::path& runtimeDirectory() const { return directory_.path(); }
    /// What goes into WAYLAND_DISPLAY.
    [[nodiscard]] const std::string& displayName() const { return displayName_; }
    /// Where its clients connect.
    [[nodiscard]] std::filesystem::path socket() const { return runtimeDirectory() / displayName_; }
    /// What goes into DBUS_SESSION_BUS_ADDRESS: that of the bus that it serves or, where there is none, what keeps GLib
    /// from looking for one elsewhere or starting one.
    [[nodiscard]] virtual std::string busAddress() const { return "disabled:"; }
    [[nodiscard]] pid_t processId() const { return process_->processId(); }
    /// The user that compositors run as.
    static uid_t user();

    /// Gives displays other modes, places, scales and transforms, from the first one on, as a person's program for
    /// displays does. Throws when the compositor refuses. What is off comes on.
    virtual void arrange(const std::vector<PrivateOutput>& outputs) const;
    /// Takes the display of that number, from 1 on, out of the layout; false where the compositor cannot do that with
    /// displays that are none (sway before 1.8).
    [[nodiscard]] virtual bool switchOff(int number) const;

    /// Keeps it from answering anybody, until thaw().
    void freeze() { process_->sendSignal(SIGSTOP); }
    void thaw() { process_->sendSignal(SIGCONT); }

    /// Takes it away from its clients.
    void stop() { process_->end(); }
    /// The same without a warning.
    void crash() { process_->end(SIGKILL); }

  protected:
    explicit CompositorProcess(std::string_view name) : directory_(name) {}

    /// Runs the compositor with so many displays, named HEADLESS-1 and so on, and more in its environment, and waits
    /// until it serves clients.
    /// Throws, with its log, when it does not get there.
    void start(std::vector<std::string> arguments, std::size_t outputs,
               const std::map<std::string, std::string>& environment = {});

    /// The name of the display of that number, from 1 on.
    static std::string outputName(std::size_t number);

    /// Makes the directory, and all that is in it, the compositor's user's. start() does so, too.
    void giveAway() const;

    /// Has the compositor know its clients' programs also where these run as another user; to be called before start().
    void showPrograms() { showsPrograms_ = true; }

  private:
    void runDisplayProgram(std::vector<std::string> arguments) const;

    TemporaryDirectory directory_;
    bool showsPrograms_ = false;
    std::unique_ptr<ChildProcess> process_;
    std::string displayName_;
};

}  // namespace vantrel::desk
