#pragma once

#include <wayland-client.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/desk/support/Keyboard.hpp"
#include "tests/desk/support/Wait.hpp"
#include "tests/desk/wayland/support/Hands.hpp"
#include "tests/desk/wayland/support/KeyboardMap.hpp"
#include "tests/desk/wayland/support/LayoutPoint.hpp"

struct kde_output_order_v1;
struct org_kde_kwin_fake_input;
struct zwlr_layer_shell_v1;
struct zwlr_virtual_pointer_manager_v1;
struct zwp_virtual_keyboard_manager_v1;
struct wp_viewporter;
struct zxdg_output_manager_v1;

namespace vantrel::desk {

/// A person at a Wayland session: hands on a keyboard and a mouse, and eyes on the pointer, which are a window behind
/// everything on each display. So it sees where the pointer is without asking anybody, except while something covers
/// that window. Its points are told from the main display's corner on, as the agent's are.
class SeatClient {
  public:
    /// Connects; throws when there is no such compositor or it lacks what a test needs. `layouts` are the keyboard's,
    /// such as "us" or "us,ru", `options` those of its map, ours among them, such as "vantrel:hyper".
    SeatClient(const std::filesystem::path& socket, const std::string& layouts, const std::string& options = {});
    ~SeatClient();
    SeatClient(const SeatClient&) = delete;
    SeatClient& operator=(const SeatClient&) = delete;

    /// Presses the keys in order and lets go of them in reverse order.
    void type(const Chord& chord);
    /// Presses the keys in order and keeps them down until letGo().
    void hold(const Chord& chord);
    void letGo();
    /// Makes the layout of that number, from 0 on, the active one.
    void chooseLayout(unsigned number);

    /// Moves the pointer as a hand does and waits until it is there; throws when it does not get there.
    void moveTo(LayoutPoint point);
    /// The same without waiting, for where something covers the window behind everything.
    void moveUnseenTo(LayoutPoint point);
    void pressButton();
    void releaseButton();
    /// How many presses of a button came to the window behind everything up to now.
    [[nodiscard]] int clicks() const { return clicks_; }
    /// Waits until it is so many.
    bool waitForClicks(int count);

    /// Whether programs that record the screen are told of the pointer here.
    [[nodiscard]] bool tellsRecorders() const { return tellsRecorders_; }

    /// Where the pointer was last seen; none when something covers it.
    std::optional<LayoutPoint> pointer();
    bool waitFor(LayoutPoint point, Duration deadline = generousDeadline);
    bool staysAt(LayoutPoint point, Duration time = quietTime);

    /// The same; where something covers or hides it, where it was before.
    LayoutPoint lastSeen();

    /// The displays on which the pointer can be seen by now.
    std::size_t displayCount();

    /// Where the displays stand, as the compositor has told.
    [[nodiscard]] std::vector<LayoutArea> displays() const;
    /// Where the main one does.
    [[nodiscard]] LayoutPoint origin() const;

    /// Waits until the compositor has carried out all that was asked.
    void synchronise();

    /// Waits for events, for so long at most.
    void look(Duration time);

  private:
    struct Output;
    struct Events;

    void bind(std::uint32_t name, std::string_view interface, std::uint32_t version);
    void watch(Output& output);
    void growHands();
    [[nodiscard]] bool hasHands() const;
    /// Where the pointer is by the events that have been taken in; none when something covers it.
    [[nodiscard]] std::optional<LayoutPoint> place() const;

    struct Disconnect {
        void operator()(wl_display* display) const { wl_display_disconnect(display); }
    };

    std::unique_ptr<wl_display, Disconnect> display_;
    wl_registry* registry_ = nullptr;
    wl_compositor* compositor_ = nullptr;
    wl_shm* shm_ = nullptr;
    wl_seat* seat_ = nullptr;
    wl_pointer* pointerDevice_ = nullptr;
    wl_buffer* nothing_ = nullptr;  ///< a transparent point
    wp_viewporter* viewporter_ = nullptr;
    zxdg_output_manager_v1* outputManager_ = nullptr;
    zwlr_layer_shell_v1* layerShell_ = nullptr;
    zwlr_virtual_pointer_manager_v1* pointerManager_ = nullptr;
    zwp_virtual_keyboard_manager_v1* keyboardManager_ = nullptr;
    org_kde_kwin_fake_input* fakeInput_ = nullptr;  ///< where the two above are not offered
    kde_output_order_v1* order_ = nullptr;
    std::vector<std::string> toldOrder_;
    std::string mainDisplay_;  ///< its name, where the compositor tells of one
    std::vector<std::unique_ptr<Output>> outputs_;

    KeyboardMap map_;
    std::unique_ptr<Hands> hands_;
    std::vector<std::string> held_;

    wl_surface* pointed_ = nullptr;  ///< the surface under the pointer
    LayoutPoint onSurface_;
    LayoutPoint lastSeen_;
    int clicks_ = 0;
    bool tellsRecorders_ = false;
};

}  // namespace vantrel::desk
