#pragma once

#include <cairo/cairo.h>

#include <functional>
#include <memory>

#include "helpers/messages/Wayland/Handles.hpp"

namespace vantrel::overlay {

/// A picture in memory that is shared with the compositor.
class Pixels {
  public:
    /// Of that size in pixels, transparent but for what `draw` draws. Null where there is no memory.
    static std::unique_ptr<Pixels> draw(wl_shm& shm, int width, int height, const std::function<void(cairo_t*)>& draw);
    Pixels(const Pixels&) = delete;
    Pixels& operator=(const Pixels&) = delete;

    [[nodiscard]] wl_buffer* buffer() const { return buffer_.get(); }

    /// Whether the compositor still reads it.
    [[nodiscard]] bool isInUse() const { return isInUse_; }

  private:
    explicit Pixels(Handle<wl_buffer> buffer);

    Handle<wl_buffer> buffer_;
    bool isInUse_ = true;
};

}  // namespace vantrel::overlay
