#pragma once

#include <csignal>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

/// A session bus of its own, without services to start unless a test offers some.
class SessionBus {
  public:
    /// Starts the bus, as that user where one is given, and waits until it accepts clients; throws when it does not.
    explicit SessionBus(std::optional<uid_t> user = std::nullopt);

    /// What goes into DBUS_SESSION_BUS_ADDRESS.
    [[nodiscard]] const std::string& address() const { return address_; }

    /// Lets the bus start the program for those who call the name. What it is started with is told to the bus by
    /// UpdateActivationEnvironment.
    void offerService(const std::string& name, const std::string& program) const;

    /// Keeps the bus from answering anybody, until thaw().
    void freeze() { process_->sendSignal(SIGSTOP); }
    void thaw() { process_->sendSignal(SIGCONT); }

    /// Takes the bus away from its clients.
    void stop() { process_->end(); }

  private:
    [[nodiscard]] std::filesystem::path servicesDirectory() const { return directory_.path() / "services"; }

    TemporaryDirectory directory_;
    std::unique_ptr<ChildProcess> process_;
    std::string address_;
};

}  // namespace vantrel::desk
