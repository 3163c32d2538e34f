#include "helpers/messages/Palette.hpp"

#include <numbers>

namespace vantrel::overlay {

namespace {

void roundedPath(cairo_t* context, double margin, double width, double height, double radius) {
    constexpr double quarter = std::numbers::pi / 2;
    const double left = margin + radius;
    const double top = margin + radius;
    const double right = width - margin - radius;
    const double bottom = height - margin - radius;
    cairo_new_sub_path(context);
    cairo_arc(context, right, top, radius, -quarter, 0);
    cairo_arc(context, right, bottom, radius, 0, quarter);
    cairo_arc(context, left, bottom, radius, quarter, 2 * quarter);
    cairo_arc(context, left, top, radius, 2 * quarter, 3 * quarter);
    cairo_close_path(context);
}

}  // namespace

void drawGround(cairo_t* context, int width, int height, int cornerRadius, bool isTranslucent) {
    Color ground = groundColor;
    if (!isTranslucent) {
        ground.alpha = 1;
        // The window's shape cuts the corners; what it leaves must not be black.
        setColor(context, rimColor);
        cairo_paint(context);
    }
    roundedPath(context, 0.5, width, height, cornerRadius - 0.5);
    setColor(context, ground);
    cairo_fill_preserve(context);
    setColor(context, rimColor);
    cairo_set_line_width(context, 1);
    cairo_stroke(context);
}

}  // namespace vantrel::overlay
