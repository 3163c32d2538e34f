#include "Vantrel/Backends/Wayfire/WayfireSocket.hpp"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include "Vantrel/Backends/Wayfire/WayfireMessages.hpp"

namespace vantrel::wayfire {

namespace {

constexpr std::uint32_t longestMessage = 16U * 1024 * 1024;  // beyond that it is none

}  // namespace

std::optional<std::vector<std::string>> completeMessages(std::string& received) {
    std::vector<std::string> messages;
    std::size_t begin = 0;
    std::uint32_t length = 0;
    while (received.size() - begin >= sizeof length) {
        std::memcpy(&length, received.data() + begin, sizeof length);
        if (length > longestMessage) {
            return std::nullopt;
        }
        if (received.size() - begin - sizeof length < length) {
            break;
        }
        messages.push_back(received.substr(begin + sizeof length, length));
        begin += sizeof length + length;
    }
    received.erase(0, begin);
    return messages;
}

WayfireSocket::WayfireSocket(const std::filesystem::path& socketFile)
    : socket_(connectToSocket(socketFile, SOCK_NONBLOCK)) {
    if (socket_.isOpen()) {
        listening_ = LoopSource::whenReadable(socket_.get(),
                                              [this] {
                                                  receive();
                                                  deliver();
                                              },
                                              {.priority = G_PRIORITY_HIGH});
    }
}

void WayfireSocket::close() {
    listening_.reset();
    socket_.reset();
}

bool WayfireSocket::send(const std::string& json) {
    const auto length = static_cast<std::uint32_t>(json.size());
    std::string message(reinterpret_cast<const char*>(&length), sizeof length);
    message += json;
    const ssize_t sent = ::send(socket_.get(), message.data(), message.size(), MSG_NOSIGNAL);
    if (sent == static_cast<ssize_t>(message.size())) {
        ++unanswered_;
        return true;
    }
    if (sent >= 0) {
        close();  // the rest would be taken for another message
    }
    return false;
}

std::optional<std::string> WayfireSocket::call(const std::string& json, Clock::time_point deadline) {
    if (!send(json)) {
        return std::nullopt;
    }
    bool isLate = false;
    while (unanswered_ > 0 && !isLate && waitUntilReadable(socket_.get(), deadline)) {
        receive();
        isLate = Clock::now() >= deadline;
    }
    if (!events_.empty()) {
        delivery_ = LoopSource::after({}, [this] { deliver(); }, {.priority = G_PRIORITY_HIGH});
    }
    return unanswered_ == 0 && isOpen() ? std::optional(std::move(answer_)) : std::nullopt;
}

void WayfireSocket::receive() {
    std::array<char, std::size_t{16} * 1024> buffer;
    const ssize_t count = recv(socket_.get(), buffer.data(), buffer.size(), 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    if (count <= 0) {
        close();
        return;
    }
    received_.append(buffer.data(), static_cast<std::size_t>(count));
    auto messages = completeMessages(received_);
    if (!messages) {
        close();
        return;
    }
    for (std::string& message : *messages) {
        if (isEvent(message)) {
            events_.push_back(std::move(message));
        } else {
            answer_ = std::move(message);
            unanswered_ -= unanswered_ > 0 ? 1 : 0;
        }
    }
}

void WayfireSocket::deliver() {
    for (const std::string& event : std::exchange(events_, {})) {
        if (told_) {
            told_(event);
        }
    }
}

}  // namespace vantrel::wayfire
