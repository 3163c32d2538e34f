#include "tests/desk/demo/ArrowCursor.hpp"

#include <array>
#include <cstdint>

namespace vantrel::desk {

namespace {

constexpr std::uint16_t cursorSize = 36;
constexpr std::int16_t hotSpot = 3;
constexpr std::uint32_t edgeWidth = 4;
constexpr std::uint16_t fullColour = 0xFFFF;

/// The outline of the arrow, its tip first.
constexpr std::array<xcb_point_t, 8> outline = {
    {{3, 3}, {3, 27}, {9, 22}, {13, 31}, {17, 29}, {13, 20}, {20, 20}, {3, 3}}};

/// A picture of one bit a pixel, empty at first.
xcb_pixmap_t makeBitmap(XConnection& connection, xcb_gcontext_t& context) {
    const xcb_pixmap_t bitmap = xcb_generate_id(connection.get());
    xcb_create_pixmap(connection.get(), 1, bitmap, connection.root(), cursorSize, cursorSize);
    context = xcb_generate_id(connection.get());
    const std::uint32_t values[] = {0, edgeWidth};
    xcb_create_gc(connection.get(), context, bitmap, XCB_GC_FOREGROUND | XCB_GC_LINE_WIDTH, values);
    const xcb_rectangle_t all{.x = 0, .y = 0, .width = cursorSize, .height = cursorSize};
    xcb_poly_fill_rectangle(connection.get(), bitmap, context, 1, &all);
    const std::uint32_t set = 1;
    xcb_change_gc(connection.get(), context, XCB_GC_FOREGROUND, &set);
    xcb_fill_poly(connection.get(), bitmap, context, XCB_POLY_SHAPE_NONCONVEX, XCB_COORD_MODE_ORIGIN, outline.size(),
                  outline.data());
    return bitmap;
}

}  // namespace

void showArrowCursor(XConnection& connection) {
    xcb_gcontext_t context = XCB_NONE;
    const xcb_pixmap_t inside = makeBitmap(connection, context);
    xcb_free_gc(connection.get(), context);
    const xcb_pixmap_t shape = makeBitmap(connection, context);
    xcb_poly_line(connection.get(), XCB_COORD_MODE_ORIGIN, shape, context, outline.size(), outline.data());
    xcb_free_gc(connection.get(), context);

    const xcb_cursor_t cursor = xcb_generate_id(connection.get());
    xcb_create_cursor(connection.get(), cursor, inside, shape, fullColour, fullColour, fullColour, 0, 0, 0, hotSpot,
                      hotSpot);
    xcb_change_window_attributes(connection.get(), connection.root(), XCB_CW_CURSOR, &cursor);
    xcb_free_cursor(connection.get(), cursor);
    xcb_free_pixmap(connection.get(), inside);
    xcb_free_pixmap(connection.get(), shape);
    connection.synchronise();
}

}  // namespace vantrel::desk
