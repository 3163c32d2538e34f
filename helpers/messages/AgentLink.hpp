#pragma once

#include <optional>

#include "Vantrel/Desktop/HelperProgram.hpp"
#include "helpers/messages/OverlayMessage.hpp"

namespace vantrel::overlay {

using desktop::OverlayMessage;

/// The overlay's end of the socket to the agent that started it.
class AgentLink {
  public:
    /// The descriptor under which the agent hands the socket over.
    static constexpr int descriptor = desktop::helperSocket;

    /// The next message that has arrived; none when there is none. Sets isClosed() when the agent hung up.
    std::optional<OverlayMessage> receive();

    void send(const OverlayMessage& message);

    [[nodiscard]] bool isClosed() const { return isClosed_; }

  private:
    bool isClosed_ = false;
};

}  // namespace vantrel::overlay
