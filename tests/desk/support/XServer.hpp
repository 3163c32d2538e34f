#pragma once

#include <memory>
#include <string>

#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

/// A private X server without hardware: Xorg with its dummy driver, which has sixteen outputs, sends real RandR events
/// and needs neither a console nor input devices.
class XServer {
  public:
    /// Starts the server on a free display number and waits until it accepts clients. Throws, with the end of the
    /// server's log, when it does not come up.
    XServer();
    ~XServer() = default;
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    /// What goes into DISPLAY.
    [[nodiscard]] const std::string& displayName() const { return displayName_; }

    /// Takes the server away from its clients.
    void stop() { process_->end(); }

  private:
    [[nodiscard]] std::string endOfLog() const;

    TemporaryDirectory directory_;
    std::unique_ptr<ChildProcess> process_;
    std::string displayName_;
};

}  // namespace vantrel::desk
