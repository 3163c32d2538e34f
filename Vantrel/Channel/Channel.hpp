#pragma once

#include <optional>
#include <string>

#include "Vantrel/Channel/Message.hpp"
#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel {

/// One end of the socket between the agent and a helper program (AF_UNIX, packets, nonblocking). Both ends say their
/// version first, and neither listens to another version: a package may be upgraded under an agent that runs.
class Channel {
  public:
    /// The number under which a helper program finds its end of the socket.
    static constexpr int helperDescriptor = 3;

    /// The longest packet in bytes; a longer message is not sent.
    static constexpr std::size_t longestPacket = 65536;

    /// An end that is closed.
    Channel() = default;

    /// Takes the socket over and says this program's version to the other end.
    explicit Channel(FileDescriptor socket);

    /// Sends without waiting. False when the other end has gone or does not read, which ends the channel: what does not
    /// read must not make its sender wait or grow. The end is then received as if the other had hung up.
    bool send(const Message& message);

    /// The next message that has arrived; none when none waits. Closes this end when the other has gone.
    std::optional<Message> receive();

    [[nodiscard]] bool isOpen() const { return socket_.isOpen(); }
    [[nodiscard]] int descriptor() const { return socket_.get(); }

    /// The version of the other end, where that is what closed this one; else empty.
    [[nodiscard]] const std::string& otherVersion() const { return otherVersion_; }

    void close() { socket_.reset(); }

  private:
    void greeted(const Message& message);

    FileDescriptor socket_;
    bool isGreeted_ = false;
    std::string otherVersion_;
};

}  // namespace vantrel
