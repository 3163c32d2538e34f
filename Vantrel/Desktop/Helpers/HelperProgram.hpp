#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "Vantrel/Channel/Channel.hpp"

namespace vantrel::desktop {

/// Where a helper program of that name is installed; in the build tree it stands to the agent in the same way.
std::filesystem::path helperProgram(std::string_view name);

/// Starts the program with its end of a new channel, and returns the agent's end; closed when it could not be started.
/// The argument, unless empty, is the program's only one. The main loop takes note of the program's end.
Channel startHelper(const std::filesystem::path& program, const std::string& argument = {});

}  // namespace vantrel::desktop
