#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/desk/support/AgentProcess.hpp"
#include "tests/desk/support/DisplayLayout.hpp"
#include "tests/desk/support/Environment.hpp"
#include "tests/desk/support/Home.hpp"
#include "tests/desk/support/Keyboard.hpp"
#include "tests/desk/support/Pointer.hpp"
#include "tests/desk/support/SessionBus.hpp"
#include "tests/desk/support/StoredDefaults.hpp"
#include "tests/desk/support/XConnection.hpp"
#include "tests/desk/support/XServer.hpp"

namespace vantrel::desk {

/// What a desk has besides its X server.
struct DeskOptions {
    bool hasSessionBus = true;
    bool hasWindowManager = false;
};

/// A private desk: an X server with two displays, an ordinary keyboard, a session bus and an empty home. Instant
/// animation and no sound are stored, because most tests ask where the pointer lands.
class Desk {
  public:
    explicit Desk(const DeskOptions& options = {});
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    XServer& server() { return server_; }
    /// The connection that the keyboard and the pointer use.
    XConnection& connection() { return connection_; }
    DisplayLayout& layout() { return layout_; }
    Keyboard& keyboard() { return keyboard_; }
    Pointer& pointer() { return pointer_; }
    Home& home() { return home_; }
    /// Only on a desk with a session bus.
    SessionBus& bus() { return *bus_; }
    /// Only on a desk with a window manager.
    ChildProcess& windowManager() { return *windowManager_; }

    /// The environment of a program on this desk; to be changed before the program starts.
    Environment& environment() { return environment_; }

    /// The agent's store.
    [[nodiscard]] StoredDefaults defaults() const { return StoredDefaults(home_.storeFile()); }

    /// Has another program run the program under test from its next start on, e.g. {"valgrind", "--quiet"}.
    void wrapAgent(std::vector<std::string> wrapper) { agentWrapper_ = std::move(wrapper); }

    /// Starts the program with the arguments and does not wait for anything.
    std::unique_ptr<AgentProcess> startProgram(const std::vector<std::string>& arguments = {});

    /// Starts the agent and waits until it holds its last hot key, Hyper + S, and so is ready. Throws, with what the
    /// agent wrote on stderr, when it does not get there.
    std::unique_ptr<AgentProcess> startAgent();

    /// Waits until the agent holds the chord (any other program would do as well); false at the deadline.
    bool waitForHotKey(const Chord& chord);

    /// Saves a picture of the whole desk, for people to look at.
    void saveScreenshot(const std::filesystem::path& file) const;

  private:
    XServer server_;
    XConnection connection_;
    DisplayLayout layout_;
    Keyboard keyboard_;
    Pointer pointer_;
    Home home_;
    Environment environment_;
    std::vector<std::string> agentWrapper_;
    std::unique_ptr<SessionBus> bus_;
    std::unique_ptr<ChildProcess> windowManager_;
    pid_t lastAgent_ = 0;
};

}  // namespace vantrel::desk
