#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desk/support/AgentProcess.hpp"
#include "tests/desk/support/Environment.hpp"
#include "tests/desk/support/Home.hpp"
#include "tests/desk/support/StoredDefaults.hpp"
#include "tests/desk/wayland/support/CompositorProcess.hpp"
#include "tests/desk/wayland/support/LayoutPoint.hpp"

namespace vantrel::desk {

/// A private Wayland session: a compositor and an empty home. Instant animation and no sound are stored, because most
/// tests ask where the pointer lands.
class CompositorDesk {
  public:
    explicit CompositorDesk(std::unique_ptr<CompositorProcess> compositor);
    virtual ~CompositorDesk() = default;
    CompositorDesk(const CompositorDesk&) = delete;
    CompositorDesk& operator=(const CompositorDesk&) = delete;

    CompositorProcess& compositor() { return *compositor_; }

    /// The environment of a program in this session; to be changed before the program starts.
    Environment& environment() { return environment_; }

    /// The person's home.
    [[nodiscard]] const Home& home() const { return home_; }

    /// The agent's store.
    [[nodiscard]] StoredDefaults defaults() const { return StoredDefaults(home_.storeFile()); }

    /// Starts the program with the arguments and does not wait for anything.
    std::unique_ptr<AgentProcess> startProgram(const std::vector<std::string>& arguments = {});

    /// Has another program run the program under test from its next start on.
    void wrapAgent(std::vector<std::string> wrapper) { agentWrapper_ = std::move(wrapper); }

    /// Starts the agent and waits until it serves, which is after it has registered its hot keys. Throws, with what the
    /// agent wrote on stderr, when it does not get there.
    std::unique_ptr<AgentProcess> startAgent();

    /// Where the agent takes URLs from other starts.
    [[nodiscard]] std::filesystem::path agentSocket() const;

    /// Whether an agent listens; a dead one's socket may stand there, too.
    [[nodiscard]] bool isServed() const;

    /// Has the agent save where the pointer is, by the URL, and waits for that; again where it does not, because the
    /// compositor has no time to say where that is.
    bool savePoint();

    /// Hands the URL over to the agent; false when nobody takes it.
    bool open(const std::string& url);
    /// The same, and waits until the agent has taken another one. By then it has obeyed this, unless the machine kept
    /// it from running in between.
    bool openAndWait(const std::string& url);

  protected:
    /// What a person's eyes are asked for.
    struct Eyes {
        std::function<std::optional<LayoutPoint>()> pointer;
        std::function<bool(Duration deadline)> waitForTarget;
    };

    /// Asks for a jump and waits until the pointer is at its target; false when it does not get there. Where the
    /// pointer does not move at all this is done again: a compositor that has no time to tell the agent where the
    /// pointer is makes a jump none.
    static bool jump(const std::function<void()>& ask, const Eyes& eyes);

  private:
    std::unique_ptr<CompositorProcess> compositor_;
    Home home_;
    Environment environment_;
    std::vector<std::string> agentWrapper_;
    int programs_ = 0;
};

}  // namespace vantrel::desk
