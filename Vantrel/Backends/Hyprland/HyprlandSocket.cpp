#include "Vantrel/Backends/Hyprland/HyprlandSocket.hpp"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <utility>

namespace vantrel::hyprland {

namespace {

constexpr std::size_t longestAnswer = std::size_t{16} * 1024 * 1024;  // beyond that it is none
/// More than a glide sends before a compositor that is alive answers one.
constexpr std::size_t mostUnanswered = 32;

}  // namespace

FileDescriptor HyprlandSocket::send(std::string_view request) const {
    FileDescriptor socket = connectToSocket(socketFile_, SOCK_NONBLOCK);
    const ssize_t sent = ::send(socket.get(), request.data(), request.size(), MSG_NOSIGNAL);
    return sent == static_cast<ssize_t>(request.size()) ? std::move(socket) : FileDescriptor();
}

std::optional<std::string> HyprlandSocket::ask(std::string_view request, Clock::time_point deadline) const {
    const FileDescriptor socket = send(request);
    std::string answer;
    std::array<char, std::size_t{16} * 1024> buffer;
    while (answer.size() < longestAnswer && waitUntilReadable(socket.get(), deadline)) {
        const ssize_t count = recv(socket.get(), buffer.data(), buffer.size(), 0);
        if (count == 0) {
            return answer;
        }
        if (count > 0) {
            answer.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (errno != EAGAIN && errno != EINTR) {
            break;
        }
    }
    return std::nullopt;
}

bool HyprlandSocket::tell(std::string_view request) {
    std::erase_if(unanswered_, [](const FileDescriptor& socket) { return waitUntilReadable(socket.get(), {}); });
    FileDescriptor socket = unanswered_.size() < mostUnanswered ? send(request) : FileDescriptor();
    if (!socket.isOpen()) {
        return false;
    }
    unanswered_.push_back(std::move(socket));
    return true;
}

}  // namespace vantrel::hyprland
