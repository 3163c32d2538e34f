#include "Vantrel/Backends/Sway/SwayIpc.hpp"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>

namespace vantrel::sway {

namespace {

constexpr std::string_view magic = "i3-ipc";
constexpr std::size_t headerLength = magic.size() + 2 * sizeof(std::uint32_t);
constexpr std::uint32_t firstEvent = 0x80000000;
constexpr std::uint32_t longestPayload = 64U * 1024 * 1024;  // beyond that it is no message

std::uint32_t numberAt(std::string_view text, std::size_t offset) {
    std::uint32_t number = 0;
    std::memcpy(&number, text.data() + offset, sizeof number);
    return number;
}

}  // namespace

bool SwayIpc::open() {
    if (isOpen()) {
        return true;
    }
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string& path = socketFile_.native();
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (path.empty() || path.size() >= sizeof address.sun_path) {
        return false;
    }
    std::memcpy(static_cast<char*>(address.sun_path), path.c_str(), path.size());
    if (connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return false;
    }
    socket_ = std::move(socket);
    return true;
}

void SwayIpc::close() {
    socket_.reset();
    received_.clear();
    unanswered_ = 0;
}

std::optional<pid_t> SwayIpc::peer() const {
    ucred credentials{};
    socklen_t length = sizeof credentials;
    if (!isOpen() || getsockopt(socket_.get(), SOL_SOCKET, SO_PEERCRED, &credentials, &length) != 0) {
        return std::nullopt;
    }
    return credentials.pid;
}

bool SwayIpc::send(MessageType type, std::string_view payload) {
    if (!open()) {
        return false;
    }
    const auto length = static_cast<std::uint32_t>(payload.size());
    std::string message(magic);
    message.append(reinterpret_cast<const char*>(&length), sizeof length);
    message.append(reinterpret_cast<const char*>(&type), sizeof type);
    message += payload;
    const ssize_t sent = ::send(socket_.get(), message.data(), message.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno == EAGAIN) {
        return false;  // it has long taken nothing
    }
    if (sent != static_cast<ssize_t>(message.size())) {
        close();
        return false;
    }
    ++unanswered_;
    return true;
}

bool SwayIpc::tell(MessageType type, std::string_view payload) {
    if (unanswered_ > 0) {
        take();
    }
    // The other end may have gone since the last message.
    return send(type, payload) || (!isOpen() && send(type, payload));
}

std::optional<std::string> SwayIpc::ask(MessageType type, std::string_view payload, Clock::time_point deadline) {
    if (!tell(type, payload)) {
        return std::nullopt;
    }
    while (isOpen() && unanswered_ > 0) {
        std::vector<Message> messages = take();
        if (unanswered_ == 0 && !messages.empty()) {
            return std::move(messages.back().payload);
        }
        if (messages.empty() && !wait(deadline)) {
            break;
        }
    }
    return std::nullopt;
}

bool SwayIpc::settle(Clock::time_point deadline) {
    while (isOpen() && unanswered_ > 0) {
        if (take().empty() && !wait(deadline)) {
            return false;
        }
    }
    return isOpen();
}

bool SwayIpc::wait(Clock::time_point deadline) {
    if (!isOpen()) {
        return false;
    }
    const auto left = std::max(deadline - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    const timespec timeout{.tv_sec = static_cast<std::time_t>(seconds.count()),
                           .tv_nsec = static_cast<long>(std::chrono::nanoseconds(left - seconds).count())};
    pollfd poll{.fd = socket_.get(), .events = POLLIN, .revents = 0};
    const int ready = ppoll(&poll, 1, &timeout, nullptr);
    return ready > 0 || (ready < 0 && errno == EINTR);
}

std::vector<Message> SwayIpc::take() {
    std::array<char, std::size_t{16} * 1024> buffer;
    ssize_t count = 0;
    while (isOpen() && (count = recv(socket_.get(), buffer.data(), buffer.size(), 0)) > 0) {
        received_.append(buffer.data(), static_cast<std::size_t>(count));
        if (static_cast<std::size_t>(count) < buffer.size()) {
            break;  // another read would only find that there is no more
        }
    }
    const bool hasEnded = count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR);

    std::vector<Message> messages;
    std::size_t begin = 0;
    bool isSense = true;
    while (received_.size() - begin >= headerLength && isSense) {
        const std::string_view rest = std::string_view(received_).substr(begin);
        const std::uint32_t length = numberAt(rest, magic.size());
        const std::uint32_t type = numberAt(rest, magic.size() + sizeof length);
        isSense = rest.starts_with(magic) && length <= longestPayload;
        if (!isSense || rest.size() - headerLength < length) {
            break;
        }
        messages.push_back({static_cast<MessageType>(type), std::string(rest.substr(headerLength, length))});
        unanswered_ -= type < firstEvent && unanswered_ > 0 ? 1 : 0;
        begin += headerLength + length;
    }
    received_.erase(0, begin);
    if (hasEnded || !isSense) {
        close();
    }
    return messages;
}

}  // namespace vantrel::sway
