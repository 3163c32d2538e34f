#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tests/desk/support/ChildProcess.hpp"

namespace vantrel::desk {

/// The program under test, as a person's session starts it.
class AgentProcess {
  public:
    /// Starts the program with the arguments in the environment. Its stderr is added to the file. The wrapper, a
    /// program with arguments of its own, is given the command and must become the program.
    AgentProcess(const Environment& environment, std::filesystem::path standardError,
                 const std::vector<std::string>& arguments = {}, const std::vector<std::string>& wrapper = {});

    [[nodiscard]] pid_t processId() const { return process_.processId(); }
    [[nodiscard]] bool isRunning() { return process_.isRunning(); }

    /// SIGTERM and its outcome.
    ExitStatus terminate() { return process_.end(SIGTERM); }
    /// SIGKILL and its outcome.
    ExitStatus kill() { return process_.end(SIGKILL); }
    void sendSignal(int signal) { process_.sendSignal(signal); }
    std::optional<ExitStatus> waitForExit(Duration deadline = generousDeadline) {
        return process_.waitForExit(deadline);
    }

    /// All that the program wrote on stderr up to now.
    [[nodiscard]] std::string standardError() const;

  private:
    std::filesystem::path standardErrorFile_;
    ChildProcess process_;
};

}  // namespace vantrel::desk
