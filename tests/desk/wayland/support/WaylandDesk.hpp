#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/desk/support/AgentProcess.hpp"
#include "tests/desk/support/Environment.hpp"
#include "tests/desk/support/Home.hpp"
#include "tests/desk/support/StoredDefaults.hpp"
#include "tests/desk/wayland/support/CompositorProcess.hpp"
#include "tests/desk/wayland/support/SeatClient.hpp"

namespace vantrel::desk {

// Points in the layout that most of these tests use (see WaylandDesk::twoOutputs).

inline constexpr LayoutPoint onMain{.x = 300, .y = 200};
inline constexpr LayoutPoint centreOfSecond{.x = -200, .y = 250};

/// A private Wayland session: a compositor, a person at it, and an empty home, without a bus. Instant animation and no
/// sound are stored, because most tests ask where the pointer lands.
class WaylandDesk {
  public:
    /// The main display 640 x 480 at (0, 0), and to its left a second one, 400 x 300 at (-400, 100). They are small
    /// because compositors paint them without a graphics card here, and do nothing else meanwhile.
    static std::vector<PrivateOutput> twoOutputs();

    explicit WaylandDesk(std::unique_ptr<CompositorProcess> compositor, const std::string& keyboardLayouts = "us",
                         const std::string& keyboardOptions = {});
    virtual ~WaylandDesk() = default;
    WaylandDesk(const WaylandDesk&) = delete;
    WaylandDesk& operator=(const WaylandDesk&) = delete;

    CompositorProcess& compositor() { return *compositor_; }
    SeatClient& person() { return *person_; }
    /// Has the person sit down anew, at a compositor that was started anew.
    void seatPerson();

    /// The environment of a program in this session; to be changed before the program starts.
    Environment& environment() { return environment_; }

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

    /// Presses the chord and waits until the pointer is at the point; false when it does not get there. Where the
    /// pointer does not move at all this is done again: a compositor that has no time to tell the agent where the
    /// pointer is makes a jump none.
    bool jump(const Chord& chord, LayoutPoint target);
    /// The same, by having the agent obey the URL.
    bool jump(const std::string& url, LayoutPoint target);

    /// Has the agent save where the pointer is, by the URL, and waits for that; again where it does not, as above.
    bool savePoint();

    /// Hands the URL over to the agent; false when nobody takes it.
    bool open(const std::string& url);

  private:
    bool jump(const std::function<void()>& ask, LayoutPoint target);

    std::unique_ptr<CompositorProcess> compositor_;
    std::string keyboardLayouts_;
    std::string keyboardOptions_;
    std::unique_ptr<SeatClient> person_;
    Home home_;
    Environment environment_;
    std::vector<std::string> agentWrapper_;
    int programs_ = 0;
};

}  // namespace vantrel::desk
