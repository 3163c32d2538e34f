#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/Environment.hpp"

namespace vantrel::desk {

/// What a program that ran to its end left behind.
struct ProgramOutcome {
    std::optional<int> exitCode;  ///< none when it still ran at the deadline, or was ended by a signal
    std::string standardOutput;
    std::string standardError;
};

/// Runs Vantrel to its end.
ProgramOutcome runVantrel(const Environment& environment, const std::vector<std::string>& arguments = {});

/// Runs the shell script to its end. $VANTREL is the program.
ProgramOutcome runScript(const Environment& environment, const std::string& script);

/// The arguments of a child process that runs the script, as above.
std::vector<std::string> scriptArguments(const std::string& script);

/// The whole text of the file, empty when there is none.
std::string contentOf(const std::filesystem::path& file);

}  // namespace vantrel::desk
