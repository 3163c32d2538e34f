#pragma once

#include <filesystem>
#include <string_view>

#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel::desktop {

/// The number under which a helper program finds its end of the socket.
inline constexpr int helperSocket = 3;

/// Where a helper program of that name is installed; in the build tree it stands to the agent in the same way.
std::filesystem::path helperProgram(std::string_view name);

/// Starts the program with one end of a socket of packets (nonblocking), and returns the other end; closed when it
/// could not be started. The main loop takes note of the program's end.
FileDescriptor startHelper(const std::filesystem::path& program);

}  // namespace vantrel::desktop
