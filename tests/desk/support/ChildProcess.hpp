#pragma once

#include <sys/types.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/desk/support/Environment.hpp"
#include "tests/desk/support/Wait.hpp"

namespace vantrel::desk {

/// How a process ended: by its own exit code or by a signal.
struct ExitStatus {
    std::optional<int> code;
    std::optional<int> signal;

    bool operator==(const ExitStatus&) const = default;
};

inline constexpr ExitStatus ordinaryEnd{.code = 0, .signal = std::nullopt};

/// What a child process starts with.
struct ChildProcessOptions {
    std::vector<std::string> arguments;  ///< the program first, looked for in PATH
    Environment environment = Environment::minimal();
    std::filesystem::path standardOutput = "/dev/null";
    std::filesystem::path standardError = "/dev/null";
    int keptDescriptor = -1;  ///< a descriptor that the child inherits besides the standard ones, or -1
    /// For programs that must not run as root: the user (and the group of that number) that the child becomes.
    std::optional<uid_t> user = std::nullopt;
    /// Lets that user see which programs others run, as a person's own programs are seen by their session.
    bool seesEverybodysPrograms = false;
};

/// A child process, ended by its id when this object goes, and by the kernel when the test itself dies.
class ChildProcess {
  public:
    explicit ChildProcess(const ChildProcessOptions& options);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] pid_t processId() const { return processId_; }
    [[nodiscard]] bool isRunning();

    /// Sends the signal, if the process still runs.
    void sendSignal(int signal);

    /// How the process ended; none when it still runs at the deadline.
    std::optional<ExitStatus> waitForExit(Duration deadline = generousDeadline);

    /// Sends the signal and waits; a process that does not heed it is killed.
    ExitStatus end(int signal = SIGTERM);

  private:
    void reap(int options);

    pid_t processId_ = -1;
    std::optional<ExitStatus> exitStatus_;
};

/// Whether a program of that name is installed: not every release of Debian has all that a test could use.
bool isInPath(const std::string& program);

/// Runs a program to its end. Throws, with what it wrote on stderr, unless it exits with 0.
void runProgram(const std::vector<std::string>& arguments, const Environment& environment);

}  // namespace vantrel::desk
