#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Vantrel/Handles/LocalSocket.hpp"

namespace vantrel::hyprland {

using Clock = std::chrono::steady_clock;

/// The socket on which Hyprland takes requests: one a connection, in order, answered until it hangs up.
class HyprlandSocket {
  public:
    explicit HyprlandSocket(std::filesystem::path socketFile) : socketFile_(std::move(socketFile)) {}

    /// Asks and waits for the whole answer; none at the deadline, or when nobody listens.
    [[nodiscard]] std::optional<std::string> ask(std::string_view request, Clock::time_point deadline) const;

    /// Asks and does not wait; false when it cannot be sent.
    bool tell(std::string_view request);

  private:
    [[nodiscard]] FileDescriptor send(std::string_view request) const;

    std::filesystem::path socketFile_;
    /// Kept until they are answered: Hyprland may drop what comes from who has hung up.
    std::vector<FileDescriptor> unanswered_;
};

}  // namespace vantrel::hyprland
