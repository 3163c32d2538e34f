#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "helpers/messages/Wayland/Handles.hpp"
#include "helpers/messages/Wayland/Outputs.hpp"

namespace vantrel::overlay {

/// The connection to a compositor, and what it offers for drawing over its displays.
class Compositor {
  public:
    /// Connects to the display that WAYLAND_DISPLAY names; null when it cannot, or when something is lacking.
    static std::unique_ptr<Compositor> connect();
    Compositor(const Compositor&) = delete;
    Compositor& operator=(const Compositor&) = delete;

    [[nodiscard]] wl_display* display() const { return display_.get(); }
    [[nodiscard]] wl_compositor* compositor() const { return compositor_.get(); }
    [[nodiscard]] wl_subcompositor* subcompositor() const { return subcompositor_.get(); }
    [[nodiscard]] wl_shm* shm() const { return shm_.get(); }
    [[nodiscard]] wp_viewporter* viewporter() const { return viewporter_.get(); }
    [[nodiscard]] zwlr_layer_shell_v1* layerShell() const { return layerShell_.get(); }
    [[nodiscard]] const Outputs& outputs() const { return outputs_; }

    /// A new handle of the first seat; null when there is none.
    [[nodiscard]] Handle<wl_seat> bindSeat() const;

    /// Has the compositor see what lies under the pointer, which not all do by themselves when a surface goes: else the
    /// program beneath would miss the next click. Where it lets nobody move the pointer, nothing is done.
    void lookUnderPointer() const;

    /// Whether the compositor has gone away, or ended the connection.
    [[nodiscard]] bool isLost() const { return wl_display_get_error(display()) != 0; }

    /// Tells the listeners what has come, without waiting for more.
    void receive();
    /// Sends what was asked for.
    void flush() { wl_display_flush(display()); }

  private:
    struct Callbacks;
    explicit Compositor(Handle<wl_display> display);
    void offered(std::uint32_t name, std::string_view interface, std::uint32_t version);

    Handle<wl_display> display_;
    Handle<wl_registry> registry_;
    Handle<wl_compositor> compositor_;
    Handle<wl_subcompositor> subcompositor_;
    Handle<wl_shm> shm_;
    Handle<wp_viewporter> viewporter_;
    Handle<zxdg_output_manager_v1> outputManager_;
    Handle<zwlr_layer_shell_v1> layerShell_;
    Handle<zwlr_virtual_pointer_manager_v1> pointerManager_;  ///< may be null
    std::uint32_t seat_ = 0;                                  ///< the global's name; 0 for none
    std::uint32_t seatVersion_ = 0;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> earlyOutputs_;  ///< names and versions, until all is bound
    Outputs outputs_;
};

/// Calls back when the compositor has handled all that was asked before.
class Milestone {
  public:
    Milestone(const Compositor& compositor, std::function<void()> reached);
    Milestone(const Milestone&) = delete;
    Milestone& operator=(const Milestone&) = delete;

  private:
    std::function<void()> reached_;
    Handle<wl_callback> callback_;
};

}  // namespace vantrel::overlay
