#pragma once

#include <cstdint>

#include "helpers/messages/Wayland/Compositor.hpp"

namespace vantrel::overlay {

/// The arrow of the person's cursor theme: over a surface the pointer looks as its program says.
class ArrowCursor {
  public:
    /// The compositor outlives this object.
    explicit ArrowCursor(const Compositor& compositor);

    /// Gives it to a pointer that has entered a surface with that serial, on a display of that scale.
    void giveTo(wl_pointer& pointer, std::uint32_t serial, double scale);

  private:
    const Compositor& compositor_;
    Handle<wl_surface> surface_;
    Handle<wl_cursor_theme> theme_;
    int scale_ = 0;  ///< that the theme was loaded for
};

}  // namespace vantrel::overlay
