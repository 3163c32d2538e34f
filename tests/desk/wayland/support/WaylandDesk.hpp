#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/desk/wayland/support/CompositorDesk.hpp"
#include "tests/desk/wayland/support/SeatClient.hpp"

namespace vantrel::desk {

// Points in the layout that most of these tests use (see WaylandDesk::twoOutputs).

inline constexpr LayoutPoint onMain{.x = 300, .y = 200};
inline constexpr LayoutPoint centreOfSecond{.x = -200, .y = 250};

/// A private Wayland session with a person at it who is a client of the compositor.
class WaylandDesk : public CompositorDesk {
  public:
    /// The main display 640 x 480 at (0, 0), and to its left a second one, 400 x 300 at (-400, 100). They are small
    /// because compositors paint them without a graphics card here, and do nothing else meanwhile.
    static std::vector<PrivateOutput> twoOutputs();

    explicit WaylandDesk(std::unique_ptr<CompositorProcess> compositor, const std::string& keyboardLayouts = "us",
                         const std::string& keyboardOptions = {});

    SeatClient& person() { return *person_; }
    /// Has the person sit down anew, at a compositor that was started anew.
    void seatPerson();

    /// Presses the chord and waits until the pointer is at the point; false when it does not get there.
    bool jump(const Chord& chord, LayoutPoint target);
    /// The same, by having the agent obey the URL.
    bool jump(const std::string& url, LayoutPoint target);
    /// The same, by what else asks for it; that is done again where it moves nothing.
    bool jump(const std::function<void()>& ask, LayoutPoint target);

  private:
    std::string keyboardLayouts_;
    std::string keyboardOptions_;
    std::unique_ptr<SeatClient> person_;
};

}  // namespace vantrel::desk
