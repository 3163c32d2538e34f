#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Vantrel/Handles/LocalSocket.hpp"

namespace vantrel::sway {

using Clock = std::chrono::steady_clock;

/// What a message asks for or tells of (sway-ipc(7)).
enum class MessageType : std::uint32_t {
    runCommand = 0,
    subscribe = 2,
    getVersion = 7,
    getBindingModes = 8,
    getConfig = 9,
    workspaceEvent = 0x80000000,
    modeEvent = 0x80000002,
    bindingEvent = 0x80000005,
};

struct Message {
    MessageType type = MessageType::runCommand;
    std::string payload;  ///< JSON
};

/// Takes the messages that are complete from the beginning of what a socket has given. None when that is no message at
/// all.
std::optional<std::vector<Message>> completeMessages(std::string& received);

/// A connection to the socket on which sway takes commands and answers each, in order.
class SwayIpc {
  public:
    explicit SwayIpc(std::filesystem::path socketFile) : socketFile_(std::move(socketFile)) {}

    /// Connects anew when there is no connection; false when nobody listens there.
    bool open();
    [[nodiscard]] bool isOpen() const { return socket_.isOpen(); }
    [[nodiscard]] int descriptor() const { return socket_.get(); }
    /// Who listens; none when there is no connection.
    [[nodiscard]] std::optional<Peer> peer() const { return peerOf(descriptor()); }

    /// Sends and does not wait: the answer is dropped. False when it cannot be sent.
    bool tell(MessageType type, std::string_view payload);

    /// Sends and waits for the answer; none at the deadline.
    std::optional<std::string> ask(MessageType type, std::string_view payload, Clock::time_point deadline);

    /// Waits until everything has been answered; false at the deadline.
    bool settle(Clock::time_point deadline);

    /// What the socket holds, without waiting. Closes the connection when the other end has.
    std::vector<Message> take();

  private:
    bool send(MessageType type, std::string_view payload);
    void close();

    std::filesystem::path socketFile_;
    FileDescriptor socket_;
    std::string received_;  ///< the beginning of a message
    unsigned unanswered_ = 0;
};

}  // namespace vantrel::sway
