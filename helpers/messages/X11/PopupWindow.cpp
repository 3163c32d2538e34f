#include "helpers/messages/X11/PopupWindow.hpp"

#include <cairo/cairo-xcb.h>
#include <xcb/shape.h>

#include <cmath>
#include <vector>

namespace vantrel::overlay {

namespace {

void setText(const Screen& screen, xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& text) {
    xcb_change_property(screen.connection(), XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<std::uint32_t>(text.size()), text.data());
}

/// The rows of a rectangle with round corners, for servers that know no half-transparent edges.
std::vector<xcb_rectangle_t> roundedRows(int width, int height, int radius) {
    std::vector<xcb_rectangle_t> rows;
    for (int y = 0; y < height; ++y) {
        const double fromEdge = std::min(y, height - 1 - y) + 0.5;
        int inset = 0;
        if (fromEdge < radius) {
            const double up = radius - fromEdge;
            inset = static_cast<int>(std::lround(radius - std::sqrt(radius * radius - up * up)));
        }
        rows.push_back({.x = static_cast<std::int16_t>(inset),
                        .y = static_cast<std::int16_t>(y),
                        .width = static_cast<std::uint16_t>(width - 2 * inset),
                        .height = 1});
    }
    return rows;
}

}  // namespace

PopupWindow::PopupWindow(const Screen& screen, const std::string& title, const std::string& type, Input input)
    : screen_(screen),
      visual_(screen.popupVisual()),
      colormap_(xcb_generate_id(screen.connection())),
      window_(xcb_generate_id(screen.connection())) {
    xcb_connection_t* connection = screen.connection();
    xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colormap_, screen.root(), visual_.type->visual_id);
    const std::uint32_t values[] = {0, 0, 1, colormap_};
    xcb_create_window(connection, visual_.depth, window_, screen.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      visual_.type->visual_id,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, values);
    setText(screen, window_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, title);
    setText(screen, window_, screen.atom("_NET_WM_NAME"), screen.atom("UTF8_STRING"), title);
    // The instance's name and the class's, each with its NUL.
    constexpr char instanceAndClass[] = "vantrel-overlay\0Vantrel";
    setText(screen, window_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
            std::string(instanceAndClass, sizeof instanceAndClass));
    const xcb_atom_t typeAtom = screen.atom(type);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window_, screen.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM,
                        32, 1, &typeAtom);
    if (input == Input::none) {
        xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, window_, 0,
                             0, 0, nullptr);
    }
}

PopupWindow::~PopupWindow() {
    xcb_destroy_window(screen_.connection(), window_);
    xcb_free_colormap(screen_.connection(), colormap_);
}

void PopupWindow::place(const Rect& bounds, int cornerRadius, const std::function<void(cairo_t*)>& draw) {
    xcb_connection_t* connection = screen_.connection();
    const auto width = static_cast<std::uint16_t>(bounds.width);
    const auto height = static_cast<std::uint16_t>(bounds.height);
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    xcb_create_pixmap(connection, visual_.depth, pixmap, window_, width, height);
    {
        const SurfacePointer surface(
            cairo_xcb_surface_create(connection, pixmap, visual_.type, bounds.width, bounds.height));
        const CairoPointer context(cairo_create(surface.get()));
        cairo_set_operator(context.get(), CAIRO_OPERATOR_SOURCE);
        cairo_set_source_rgba(context.get(), 0, 0, 0, 0);
        cairo_paint(context.get());
        cairo_set_operator(context.get(), CAIRO_OPERATOR_OVER);
        draw(context.get());
        cairo_surface_finish(surface.get());
    }
    const std::uint32_t geometry[] = {static_cast<std::uint32_t>(bounds.x), static_cast<std::uint32_t>(bounds.y), width,
                                      height};
    xcb_configure_window(connection, window_,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         geometry);
    setShape(bounds, cornerRadius);
    xcb_change_window_attributes(connection, window_, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection, 0, window_, 0, 0, 0, 0);
    xcb_free_pixmap(connection, pixmap);
}

void PopupWindow::setShape(const Rect& bounds, int cornerRadius) {
    if (hasAlpha()) {
        return;
    }
    const auto rows = roundedRows(bounds.width, bounds.height, cornerRadius);
    xcb_shape_rectangles(screen_.connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, XCB_CLIP_ORDERING_YX_SORTED,
                         window_, 0, 0, static_cast<std::uint32_t>(rows.size()), rows.data());
}

void PopupWindow::show() {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(screen_.connection(), window_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_map_window(screen_.connection(), window_);
}

}  // namespace vantrel::overlay
