#include "helpers/messages/AgentLink.hpp"

#include <sys/socket.h>

#include <cerrno>
#include <string>

namespace vantrel::overlay {

std::optional<OverlayMessage> AgentLink::receive() {
    std::string packet(desktop::longestOverlayPacket, '\0');
    for (;;) {
        const ssize_t length = recv(descriptor, packet.data(), packet.size(), MSG_DONTWAIT);
        if (length < 0 && errno == EINTR) {
            continue;
        }
        if (length < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
            return std::nullopt;
        }
        if (length <= 0) {
            isClosed_ = true;
            return std::nullopt;
        }
        if (auto message =
                desktop::decodedPacket(std::string_view(packet).substr(0, static_cast<std::size_t>(length)))) {
            return message;
        }
    }
}

void AgentLink::send(const OverlayMessage& message) {
    const std::string packet = desktop::encodedPacket(message);
    if (::send(descriptor, packet.data(), packet.size(), MSG_NOSIGNAL) < 0) {
        isClosed_ = true;
    }
}

}  // namespace vantrel::overlay
