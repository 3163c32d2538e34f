#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/Environment.hpp"
#include "tests/desk/support/HelperProcess.hpp"

namespace vantrel::desk {

/// Memory that the process alone has written to, in KiB.
long privateMemory(pid_t process);

/// A process with nothing but a status item (StatusItemProbe.cpp), told what to do line by line.
class ItemProcess {
  public:
    /// Starts the process and waits until its item exists; throws when it does not.
    explicit ItemProcess(const Environment& environment);
    ~ItemProcess();
    ItemProcess(const ItemProcess&) = delete;
    ItemProcess& operator=(const ItemProcess&) = delete;

    void say(const std::string& line);

    /// Waits for a line that the process wrote and takes it, with those before it; false at the deadline.
    bool waitForLine(const std::string& line, Duration deadline = generousDeadline);

    /// The next line that the process wrote; empty when none comes for a short time.
    std::string nextLine(Duration deadline = quietTime);

    /// Whether a panel shows the item, as the item itself says.
    bool isVisible();
    bool waitForVisible(bool isVisible);

    /// Memory that the process alone has written to, in KiB.
    [[nodiscard]] long privateMemory() const { return desk::privateMemory(processId()); }

    [[nodiscard]] pid_t processId() const { return process_->processId(); }
    [[nodiscard]] bool isRunning() { return process_->isRunning(); }
    ExitStatus end() { return process_->end(); }

    /// The process that draws on the screen for the item; none while there is none.
    [[nodiscard]] std::optional<pid_t> overlay() const { return overlayOf(processId()); }

  private:
    void receive();

    int socket_ = -1;
    std::string received_;
    std::vector<std::string> lines_;
    std::unique_ptr<ChildProcess> process_;
};

}  // namespace vantrel::desk
