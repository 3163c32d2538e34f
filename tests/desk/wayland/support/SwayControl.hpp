#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel::desk {

/// A person's swaymsg.
class SwayControl {
  public:
    /// Connects; throws when nobody answers there.
    explicit SwayControl(const std::filesystem::path& socket);

    /// Runs the commands; throws, with the answer, unless all of them succeed.
    void run(const std::string& commands);

    /// The answer, as JSON, to a message of that type (sway-ipc(7)).
    std::string ask(std::uint32_t type, const std::string& payload = {});

    static constexpr std::uint32_t runCommand = 0;
    static constexpr std::uint32_t getOutputs = 3;

  private:
    FileDescriptor socket_;
};

}  // namespace vantrel::desk
