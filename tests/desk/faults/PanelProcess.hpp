#pragma once

#include <csignal>
#include <filesystem>

#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

/// A panel that can hang: TestPanel in a process of its own.
class PanelProcess {
  public:
    /// Brings the panel to the bus; an item that is there or comes will find it.
    PanelProcess(const std::string& busAddress, const Environment& environment);

    /// Waits until so many items have registered since the start; false when they do not.
    bool waitForItems(std::size_t count);

    void stop() { process_->sendSignal(SIGSTOP); }
    void goOn() { process_->sendSignal(SIGCONT); }
    [[nodiscard]] pid_t processId() const { return process_->processId(); }

  private:
    TemporaryDirectory directory_;
    std::unique_ptr<ChildProcess> process_;
};

}  // namespace vantrel::desk
