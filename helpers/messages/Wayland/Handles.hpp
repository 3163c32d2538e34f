#pragma once

#include <wayland-cursor.h>

#include <memory>

#include "Vantrel/Backends/Wayland/WaylandHandles.hpp"

namespace vantrel::overlay {

struct HandleDeleter : wayland::WaylandDeleter {
    using wayland::WaylandDeleter::operator();
    void operator()(wl_cursor_theme* theme) const { wl_cursor_theme_destroy(theme); }
    void operator()(wl_region* object) const { wl_region_destroy(object); }
    void operator()(wl_subcompositor* object) const { wl_subcompositor_destroy(object); }
    void operator()(wl_subsurface* object) const { wl_subsurface_destroy(object); }
};

/// Owns an object of the connection; its end is sent with the next request.
template <typename Object>
using Handle = std::unique_ptr<Object, HandleDeleter>;

}  // namespace vantrel::overlay
