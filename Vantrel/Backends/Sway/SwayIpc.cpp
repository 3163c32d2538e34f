#include "Vantrel/Backends/Sway/SwayIpc.hpp"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>

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

std::optional<std::vector<Message>> completeMessages(std::string& received) {
    std::vector<Message> messages;
    std::size_t begin = 0;
    while (received.size() - begin >= headerLength) {
        const std::string_view rest = std::string_view(received).substr(begin);
        const std::uint32_t length = numberAt(rest, magic.size());
        const std::uint32_t type = numberAt(rest, magic.size() + sizeof length);
        if (!rest.starts_with(magic) || length > longestPayload) {
            return std::nullopt;
        }
        if (rest.size() - headerLength < length) {
            break;
        }
        messages.push_back({static_cast<MessageType>(type), std::string(rest.substr(headerLength, length))});
        begin += headerLength + length;
    }
    received.erase(0, begin);
    return messages;
}

bool SwayIpc::open() {
    if (!isOpen()) {
        socket_ = connectToSocket(socketFile_, SOCK_NONBLOCK);
    }
    return isOpen();
}

void SwayIpc::close() {
    socket_.reset();
    received_.clear();
    unanswered_ = 0;
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
        if (Clock::now() >= deadline || (messages.empty() && !waitUntilReadable(socket_.get(), deadline))) {
            break;
        }
    }
    return std::nullopt;
}

bool SwayIpc::settle(Clock::time_point deadline) {
    while (isOpen() && unanswered_ > 0) {
        const bool isEmpty = take().empty();
        const bool isLate = Clock::now() >= deadline;
        if (unanswered_ > 0 && (isLate || (isEmpty && !waitUntilReadable(socket_.get(), deadline)))) {
            return false;
        }
    }
    return isOpen();
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

    auto messages = completeMessages(received_);
    if (hasEnded || !messages) {
        close();
    }
    if (!messages) {
        return {};
    }
    for (const Message& message : *messages) {
        unanswered_ -= static_cast<std::uint32_t>(message.type) < firstEvent && unanswered_ > 0 ? 1 : 0;
    }
    return std::move(*messages);
}

}  // namespace vantrel::sway
