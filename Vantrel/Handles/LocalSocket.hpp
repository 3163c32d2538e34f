#pragma once

#include <sys/types.h>
#include <sys/un.h>

#include <chrono>
#include <filesystem>
#include <optional>

#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel {

/// The process at the other end of a local socket.
struct Peer {
    pid_t processId = 0;
    uid_t user = 0;

    bool operator==(const Peer&) const = default;
};

/// The address of a socket file (unix(7)); none where its path is too long for one.
std::optional<sockaddr_un> socketAddress(const std::filesystem::path& file);

/// Connects to a stream socket, which blocks or not as SOCK_NONBLOCK in `flags` says. Not open when nobody listens
/// there.
FileDescriptor connectToSocket(const std::filesystem::path& file, int flags = 0);

/// Who listens or has connected; none where the system does not tell.
std::optional<Peer> peerOf(int socket);

/// Waits until there is something to read, or the other end has gone; false at the deadline, and for what is not
/// open.
bool waitUntilReadable(int descriptor, std::chrono::steady_clock::time_point deadline);

}  // namespace vantrel
