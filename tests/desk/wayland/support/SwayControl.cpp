#include "tests/desk/wayland/support/SwayControl.hpp"

#include <sys/socket.h>

#include <cstring>
#include <stdexcept>
#include <string_view>

#include "Vantrel/Handles/LocalSocket.hpp"

namespace vantrel::desk {

namespace {

constexpr std::string_view magic = "i3-ipc";

void readExactly(int socket, char* buffer, std::size_t length) {
    std::size_t done = 0;
    while (done < length) {
        const ssize_t count = recv(socket, buffer + done, length - done, 0);
        if (count <= 0) {
            throw std::runtime_error("the compositor's control socket does not answer");
        }
        done += static_cast<std::size_t>(count);
    }
}

}  // namespace

SwayControl::SwayControl(const std::filesystem::path& socketPath) : socket_(connectToSocket(socketPath)) {
    const timeval patience{.tv_sec = 60, .tv_usec = 0};
    setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    if (!socket_.isOpen()) {
        throw std::runtime_error("cannot connect to " + socketPath.native());
    }
}

void SwayControl::run(const std::string& commands) {
    const std::string answer = ask(runCommand, commands);
    if (answer.find("\"success\": false") != std::string::npos ||
        answer.find("\"success\":false") != std::string::npos) {
        throw std::runtime_error(commands + ": " + answer);
    }
}

std::string SwayControl::ask(std::uint32_t type, const std::string& payload) {
    const auto length = static_cast<std::uint32_t>(payload.size());
    std::string message(magic);
    message.append(reinterpret_cast<const char*>(&length), sizeof length);
    message.append(reinterpret_cast<const char*>(&type), sizeof type);
    message += payload;
    if (send(socket_.get(), message.data(), message.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(message.size())) {
        throw std::runtime_error("the compositor's control socket takes nothing");
    }
    char header[magic.size() + 2 * sizeof(std::uint32_t)];
    readExactly(socket_.get(), header, sizeof header);
    std::uint32_t answerLength = 0;
    std::memcpy(&answerLength, header + magic.size(), sizeof answerLength);
    std::string answer(answerLength, '\0');
    readExactly(socket_.get(), answer.data(), answer.size());
    return answer;
}

}  // namespace vantrel::desk
