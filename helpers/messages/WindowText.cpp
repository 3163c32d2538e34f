#include "helpers/messages/WindowText.hpp"

#include <cairo/cairo-xcb.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "Vantrel/Desktop/StatusItem/ItemIcon.hpp"
#include "helpers/messages/Palette.hpp"

namespace vantrel::overlay {

namespace {

constexpr int widestText = 400;
constexpr int smallestPoints = 6;
constexpr int gap = 4;

/// The text in the font, or smaller where the height does not hold it.
TextLine fittingLine(const Typesetter& typesetter, const std::string& text, Font font, int height) {
    while (font.points > smallestPoints && typesetter.line(text, font, widestText).size().height > height) {
        font.points -= 1;
    }
    return typesetter.line(text, font, widestText);
}

void drawIcon(cairo_t* context, int size, double x, double y) {
    std::vector<std::uint32_t> pixels = desktop::itemIconPixels(size);
    for (std::uint32_t& pixel : pixels) {
        // Cairo takes colours multiplied by alpha.
        const std::uint32_t alpha = pixel >> 24U;
        std::uint32_t multiplied = alpha << 24U;
        for (const unsigned shift : {16U, 8U, 0U}) {
            multiplied |= ((pixel >> shift & 0xFFU) * alpha / 0xFFU) << shift;
        }
        pixel = multiplied;
    }
    const SurfacePointer surface(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()),
                                                                     CAIRO_FORMAT_ARGB32, size, size, size * 4));
    cairo_set_source_surface(context, surface.get(), x, y);
    cairo_paint(context);
    // The pixels go; the context must not look at them again.
    cairo_set_source_rgb(context, 0, 0, 0);
    cairo_surface_finish(surface.get());
}

}  // namespace

int paintWindowText(const Screen& screen, const Typesetter& typesetter, xcb_window_t window, const std::string& text,
                    const Font& font) {
    xcb_connection_t* connection = screen.connection();
    const auto geometry = x11::adopt(xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
    const auto visual = screen.visualOf(window);
    if (!geometry || !visual || visual->type == nullptr) {
        return 0;
    }
    const int height = geometry->height;
    const TextLine line = fittingLine(typesetter, text, font, height);
    const Size size = line.size();
    const int iconSize = std::min(height, screen.scaled(24));
    const int needed = iconSize + size.width + 3 * gap;
    if (geometry->width < needed) {
        return needed;
    }
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    xcb_create_pixmap(connection, visual->depth, pixmap, window, geometry->width, geometry->height);
    {
        const SurfacePointer surface(
            cairo_xcb_surface_create(connection, pixmap, visual->type, geometry->width, geometry->height));
        const CairoPointer context(cairo_create(surface.get()));
        // The colour of the tray is not known: an own ground is readable on each.
        setColor(context.get(), groundColor);
        cairo_set_operator(context.get(), CAIRO_OPERATOR_SOURCE);
        cairo_paint(context.get());
        cairo_set_operator(context.get(), CAIRO_OPERATOR_OVER);
        const int iconTop = (height - iconSize) / 2;
        drawIcon(context.get(), iconSize, 0, iconTop);
        setColor(context.get(), textColor);
        const int lineTop = (height - size.height) / 2;
        line.draw(context.get(), iconSize + gap, lineTop);
        cairo_surface_finish(surface.get());
    }
    xcb_change_window_attributes(connection, window, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection, 0, window, 0, 0, 0, 0);
    xcb_free_pixmap(connection, pixmap);
    return needed;
}

}  // namespace vantrel::overlay
