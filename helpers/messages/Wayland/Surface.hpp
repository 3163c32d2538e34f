#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "helpers/messages/Typesetter.hpp"
#include "helpers/messages/Wayland/Compositor.hpp"
#include "helpers/messages/Wayland/Pixels.hpp"

namespace vantrel::overlay {

/// A surface with what it shows.
class Surface {
  public:
    /// The compositor outlives this object.
    explicit Surface(const Compositor& compositor);
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    [[nodiscard]] wl_surface* get() const { return surface_.get(); }

    /// The pointer goes to what lies below.
    void ignorePointer();

    /// Shows what `draw` draws, in points and with its corner at the context's origin, as sharp as the scale asks for.
    /// `bounds` are those of the drawing and `surface` those of the surface around it, both on the same display.
    void show(const Rect& bounds, const Rect& surface, double scale, const std::function<void(cairo_t*)>& draw);
    /// Gives the surface the size in points, transparent.
    void showNothing(Size size);

    /// Puts in force what was asked since the last time.
    void commit() { wl_surface_commit(get()); }

  private:
    void attach(std::unique_ptr<Pixels> pixels, Size size);

    const Compositor& compositor_;
    Handle<wl_surface> surface_;
    Handle<wp_viewport> viewport_;
    std::vector<std::unique_ptr<Pixels>> pixels_;  ///< the last are shown; those before as long as they are read
};

}  // namespace vantrel::overlay
