#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Vantrel/Handles/LocalSocket.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::wayfire {

using Clock = std::chrono::steady_clock;

/// Takes the messages that are complete from the beginning of what a socket has given. None when that is no message at
/// all.
std::optional<std::vector<std::string>> completeMessages(std::string& received);

/// A connection to the socket on which wayfire's plugins answer calls, in order, and tell of events between the
/// answers: JSON, each with its length. What the plugins were asked to keep for us ends with it.
class WayfireSocket {
  public:
    /// Gets the text of each event, on the main loop.
    using Told = std::function<void(const std::string& event)>;

    /// Connects; not open when nobody listens there.
    explicit WayfireSocket(const std::filesystem::path& socketFile);
    WayfireSocket(const WayfireSocket&) = delete;
    WayfireSocket& operator=(const WayfireSocket&) = delete;

    [[nodiscard]] bool isOpen() const { return socket_.isOpen(); }
    [[nodiscard]] std::optional<Peer> peer() const { return peerOf(socket_.get()); }

    void setTold(Told told) { told_ = std::move(told); }

    /// Makes a call, the JSON of which is given, and waits for the answer; none at the deadline.
    std::optional<std::string> call(const std::string& json, Clock::time_point deadline);

  private:
    bool send(const std::string& json);
    /// Reads what the socket holds, without waiting, and sorts it into answers and events.
    void receive();
    void deliver();
    void close();

    FileDescriptor socket_;
    std::string received_;  ///< the beginning of a message
    unsigned unanswered_ = 0;
    std::vector<std::string> events_;  ///< that were read and not told yet
    std::string answer_;               ///< the last one
    LoopSource listening_;
    LoopSource delivery_;
    Told told_;
};

}  // namespace vantrel::wayfire
