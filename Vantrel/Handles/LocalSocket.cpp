#include "Vantrel/Handles/LocalSocket.hpp"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>

namespace vantrel {

std::optional<sockaddr_un> socketAddress(const std::filesystem::path& file) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string& path = file.native();
    if (path.empty() || path.size() >= sizeof address.sun_path) {
        return std::nullopt;
    }
    std::memcpy(static_cast<char*>(address.sun_path), path.c_str(), path.size());
    return address;
}

FileDescriptor connectToSocket(const std::filesystem::path& file, int flags) {
    const auto address = socketAddress(file);
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0));
    if (!address || connect(socket.get(), reinterpret_cast<const sockaddr*>(&*address), sizeof *address) != 0) {
        return {};
    }
    return socket;
}

std::optional<Peer> peerOf(int socket) {
    ucred credentials{};
    socklen_t length = sizeof credentials;
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &credentials, &length) != 0) {
        return std::nullopt;
    }
    return Peer{credentials.pid, credentials.uid};
}

bool waitUntilReadable(int descriptor, std::chrono::steady_clock::time_point deadline) {
    using Clock = std::chrono::steady_clock;
    while (descriptor >= 0) {
        const auto left = std::max(deadline - Clock::now(), Clock::duration::zero());
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
        const timespec timeout{.tv_sec = static_cast<std::time_t>(seconds.count()),
                               .tv_nsec = static_cast<long>(std::chrono::nanoseconds(left - seconds).count())};
        pollfd poll{.fd = descriptor, .events = POLLIN, .revents = 0};
        const int ready = ppoll(&poll, 1, &timeout, nullptr);
        if (ready >= 0 || errno != EINTR) {
            return ready > 0;
        }
    }
    return false;
}

}  // namespace vantrel
