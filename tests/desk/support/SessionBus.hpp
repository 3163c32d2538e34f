#pragma once

#include <memory>
#include <string>

#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

/// A session bus of its own, without services to start.
class SessionBus {
  public:
    /// Starts the bus and waits until it accepts clients; throws when it does not.
    SessionBus();

    /// What goes into DBUS_SESSION_BUS_ADDRESS.
    [[nodiscard]] const std::string& address() const { return address_; }

    /// Takes the bus away from its clients.
    void stop() { process_->end(); }

  private:
    TemporaryDirectory directory_;
    std::unique_ptr<ChildProcess> process_;
    std::string address_;
};

}  // namespace vantrel::desk
