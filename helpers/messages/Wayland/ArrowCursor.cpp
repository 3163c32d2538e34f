#include "helpers/messages/Wayland/ArrowCursor.hpp"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace vantrel::overlay {

namespace {

/// As desktops tell it, in points.
int cursorSize() {
    constexpr int usual = 24;
    const char* const text = std::getenv("XCURSOR_SIZE");
    if (text == nullptr) {
        return usual;
    }
    int size = 0;
    const std::string_view digits(text);
    std::from_chars(digits.data(), digits.data() + digits.size(), size);
    return size >= 8 && size <= 512 ? size : usual;
}

}  // namespace

ArrowCursor::ArrowCursor(const Compositor& compositor)
    : compositor_(compositor), surface_(wl_compositor_create_surface(compositor.compositor())) {}

void ArrowCursor::giveTo(wl_pointer& pointer, std::uint32_t serial, double scale) {
    const int wanted = static_cast<int>(std::ceil(scale));
    if (wanted != scale_) {
        scale_ = wanted;
        theme_.reset(wl_cursor_theme_load(std::getenv("XCURSOR_THEME"), cursorSize() * scale_, compositor_.shm()));
    }
    const wl_cursor* cursor = theme_ ? wl_cursor_theme_get_cursor(theme_.get(), "left_ptr") : nullptr;
    if (cursor == nullptr && theme_) {
        cursor = wl_cursor_theme_get_cursor(theme_.get(), "default");
    }
    if (cursor == nullptr || cursor->image_count == 0) {
        return;
    }
    wl_cursor_image* const image = cursor->images[0];
    // A size that the scale does not divide would end the connection; the built-in theme has only one.
    const auto divides = [this, image] {
        const auto factor = static_cast<std::uint32_t>(scale_);
        return image->width % factor == 0 && image->height % factor == 0;
    };
    const int bufferScale = divides() ? scale_ : 1;
    wl_surface_set_buffer_scale(surface_.get(), bufferScale);
    wl_surface_attach(surface_.get(), wl_cursor_image_get_buffer(image), 0, 0);
    wl_surface_damage(surface_.get(), 0, 0, static_cast<std::int32_t>(image->width),
                      static_cast<std::int32_t>(image->height));
    wl_surface_commit(surface_.get());
    wl_pointer_set_cursor(&pointer, serial, surface_.get(), static_cast<std::int32_t>(image->hotspot_x) / bufferScale,
                          static_cast<std::int32_t>(image->hotspot_y) / bufferScale);
}

}  // namespace vantrel::overlay
