#include "Vantrel/Channel/Channel.hpp"

#include <fcntl.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

namespace vantrel {

namespace {

constexpr auto greeting = "version";

}  // namespace

Channel::Channel(FileDescriptor socket) : socket_(std::move(socket)) {
    if (isOpen()) {
        // No program that is started from here may hold the other end's channel open.
        fcntl(socket_.get(), F_SETFD, FD_CLOEXEC);
        send(Message(greeting, g_variant_new("s", VANTREL_VERSION)));
    }
}

bool Channel::send(const Message& message) {
    const std::string packet = encodedPacket(message);
    if (!isOpen() || packet.size() > longestPacket) {
        return isOpen();
    }
    if (::send(socket_.get(), packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT) >= 0) {
        return true;
    }
    // Not closed here: whoever waits for the descriptor is to find the end there.
    shutdown(socket_.get(), SHUT_RDWR);
    return false;
}

std::optional<Message> Channel::receive() {
    std::array<char, longestPacket> packet;  // NOLINT: read only as far as it was written
    while (isOpen()) {
        const ssize_t length = recv(socket_.get(), packet.data(), packet.size(), MSG_DONTWAIT);
        if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
            return std::nullopt;
        }
        if (length < 0 && errno == ECONNRESET) {
            // The other end has gone with messages of ours unread; what it sent before is still here.
            continue;
        }
        if (length <= 0) {
            close();
            return std::nullopt;
        }
        auto message = decodedPacket({packet.data(), static_cast<std::size_t>(length)});
        if (!message) {
            continue;
        }
        if (isGreeted_) {
            return message;
        }
        greeted(*message);
    }
    return std::nullopt;
}

void Channel::greeted(const Message& message) {
    const gchar* version = "";
    if (message.is(greeting, "s")) {
        version = g_variant_get_string(message.body.get(), nullptr);
    }
    isGreeted_ = std::string_view(version) == VANTREL_VERSION;
    if (!isGreeted_) {
        otherVersion_ = *version != '\0' ? version : "unknown";
        close();
    }
}

}  // namespace vantrel
