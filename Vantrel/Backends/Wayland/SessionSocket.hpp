#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Handles/FileDescriptor.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::wayland {

/// One agent a Wayland display: the agent holds a lock, which ends with its process in whatever way, and listens on a
/// socket beside it. Another start of the program connects, sends its URLs, each ended by a NUL, and after the last one
/// another NUL, says that this was all (SHUT_WR), and gets one byte as the receipt.
class SessionSocket {
  public:
    using Opened = std::function<void(std::vector<std::string>)>;

    /// `display` is what WAYLAND_DISPLAY says, a name or a path. Lock and socket stand in `runtimeDirectory`
    /// (XDG_RUNTIME_DIR; where that is empty, in the directory of the display's own socket) under a name that is made
    /// of the display's.
    SessionSocket(const std::filesystem::path& runtimeDirectory, const std::filesystem::path& display);
    /// Of the display that the environment names, as libwayland chooses it.
    static SessionSocket ofThisSession();
    ~SessionSocket();
    SessionSocket(const SessionSocket&) = delete;
    SessionSocket& operator=(const SessionSocket&) = delete;

    /// Becomes the agent; false when another process is, or when the directory cannot be written.
    bool claim();

    /// Hands the URLs to the agent and waits for the receipt, a few seconds at most. False when there is no agent or it
    /// does not answer. An empty list says that the program was started without URLs.
    [[nodiscard]] bool send(const std::vector<std::string>& urls) const;

    /// Takes what other starts hand over from now on, on the main loop.
    void serve(Opened opened);

  private:
    struct Guest;

    void accept();
    void receive(int guest);

    std::filesystem::path lockFile_;
    std::filesystem::path socketFile_;
    FileDescriptor lock_;
    FileDescriptor listener_;
    LoopSource listenerSource_;
    std::map<int, std::unique_ptr<Guest>> guests_;
    Opened opened_;
};

}  // namespace vantrel::wayland
