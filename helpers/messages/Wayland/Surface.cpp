#include "helpers/messages/Wayland/Surface.hpp"

#include <cmath>
#include <utility>

namespace vantrel::overlay {

Surface::Surface(const Compositor& compositor)
    : compositor_(compositor),
      surface_(wl_compositor_create_surface(compositor.compositor())),
      viewport_(wp_viewporter_get_viewport(compositor.viewporter(), surface_.get())) {}

void Surface::ignorePointer() {
    const Handle<wl_region> nothing(wl_compositor_create_region(compositor_.compositor()));
    wl_surface_set_input_region(get(), nothing.get());
}

void Surface::show(const Rect& bounds, const Rect& surface, double scale, const std::function<void(cairo_t*)>& draw) {
    const auto pixels = [scale](int points) { return static_cast<int>(std::lround(points * scale)); };
    attach(Pixels::draw(*compositor_.shm(), pixels(surface.width), pixels(surface.height),
                        [&](cairo_t* context) {
                            cairo_translate(context, pixels(bounds.x - surface.x), pixels(bounds.y - surface.y));
                            cairo_scale(context, scale, scale);
                            draw(context);
                        }),
           {.width = surface.width, .height = surface.height});
}

void Surface::showNothing(Size size) {
    attach(Pixels::draw(*compositor_.shm(), 1, 1, [](cairo_t* /*context*/) {}), size);
}

void Surface::attach(std::unique_ptr<Pixels> pixels, Size size) {
    if (!pixels || size.width <= 0 || size.height <= 0) {
        return;
    }
    std::erase_if(pixels_, [](const auto& older) { return !older->isInUse(); });
    wp_viewport_set_destination(viewport_.get(), size.width, size.height);
    wl_surface_attach(get(), pixels->buffer(), 0, 0);
    wl_surface_damage(get(), 0, 0, size.width, size.height);
    pixels_.push_back(std::move(pixels));
}

}  // namespace vantrel::overlay
