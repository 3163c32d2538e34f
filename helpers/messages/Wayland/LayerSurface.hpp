#pragma once

#include <functional>

#include "helpers/messages/Wayland/Surface.hpp"

namespace vantrel::overlay {

/// A surface over everything on a display, panels included. It is seen once the compositor has said how large it is to
/// be and something was drawn.
class LayerSurface {
  public:
    enum class Keyboard { none, exclusive };

    /// `configured` is called with each size that the compositor gives it, in points. The compositor outlives this
    /// object.
    LayerSurface(const Compositor& compositor, wl_output* output, Keyboard keyboard,
                 std::function<void(Size)> configured);
    LayerSurface(const LayerSurface&) = delete;
    LayerSurface& operator=(const LayerSurface&) = delete;

    // How it is to stand, in force with the next commit.
    void coverTheOutput();
    void standAt(const Rect& bounds);  ///< in points of the display
    void askFor(Size size);

    [[nodiscard]] Surface& surface() { return surface_; }

    /// Whether the compositor has taken it away, as it does with its output.
    [[nodiscard]] bool isClosed() const { return isClosed_; }

  private:
    struct Callbacks;

    std::function<void(Size)> configured_;
    Surface surface_;
    Handle<zwlr_layer_surface_v1> layer_;
    bool isClosed_ = false;
};

}  // namespace vantrel::overlay
