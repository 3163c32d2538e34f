#include "tests/desk/tour/Canvas.hpp"

namespace vantrel::desk {

namespace {

constexpr std::uint32_t displayColour = 0x1F4E79;
constexpr std::uint32_t frameColour = 0x9DC3E6;
constexpr std::uint32_t textColour = 0xFFFFFF;
constexpr std::uint32_t wayColour = 0xFFC000;

constexpr int markRadius = 6;
constexpr int fullCircle = 360 * 64;

std::int16_t narrow(int value) {
    return static_cast<std::int16_t>(value);
}
std::uint16_t narrowSize(int value) {
    return static_cast<std::uint16_t>(value);
}

}  // namespace

Canvas::Canvas(XConnection& connection, const DisplayLayout& layout)
    : connection_(connection),
      layout_(layout),
      font_(xcb_generate_id(connection.get())),
      context_(xcb_generate_id(connection.get())) {
    const std::string font = "fixed";
    xcb_open_font(connection_.get(), font_, static_cast<std::uint16_t>(font.size()), font.c_str());
    constexpr std::uint32_t lineWidth = 2;
    const std::uint32_t values[] = {lineWidth, font_};
    xcb_create_gc(connection_.get(), context_, connection_.root(), XCB_GC_LINE_WIDTH | XCB_GC_FONT, values);
}

Canvas::~Canvas() {
    xcb_free_gc(connection_.get(), context_);
    xcb_close_font(connection_.get(), font_);
    connection_.synchronise();
}

void Canvas::setColour(std::uint32_t colour) {
    xcb_change_gc(connection_.get(), context_, XCB_GC_FOREGROUND, &colour);
}

void Canvas::drawText(MainPoint point, const std::string& text) {
    const auto corner = layout_.toRoot(point);
    const std::uint32_t colours[] = {textColour, displayColour};
    xcb_change_gc(connection_.get(), context_, XCB_GC_FOREGROUND | XCB_GC_BACKGROUND, colours);
    xcb_image_text_8(connection_.get(), static_cast<std::uint8_t>(text.size()), connection_.root(), context_,
                     narrow(corner.x), narrow(corner.y), text.c_str());
}

void Canvas::drawDisplay(const MainRect& bounds, const std::string& title) {
    const auto corner = layout_.toRoot({.x = bounds.x, .y = bounds.y});
    const xcb_rectangle_t area{.x = narrow(corner.x),
                               .y = narrow(corner.y),
                               .width = narrowSize(bounds.width),
                               .height = narrowSize(bounds.height)};
    setColour(frameColour);
    xcb_poly_fill_rectangle(connection_.get(), connection_.root(), context_, 1, &area);
    const xcb_rectangle_t inside{.x = narrow(corner.x + 2),
                                 .y = narrow(corner.y + 2),
                                 .width = narrowSize(bounds.width - 4),
                                 .height = narrowSize(bounds.height - 4)};
    setColour(displayColour);
    xcb_poly_fill_rectangle(connection_.get(), connection_.root(), context_, 1, &inside);
    drawText({.x = bounds.x + 16, .y = bounds.y + 24}, title);
    connection_.synchronise();
}

void Canvas::drawMove(MainPoint from, MainPoint to) {
    const auto start = layout_.toRoot(from);
    const auto end = layout_.toRoot(to);
    const xcb_segment_t way{.x1 = narrow(start.x), .y1 = narrow(start.y), .x2 = narrow(end.x), .y2 = narrow(end.y)};
    setColour(wayColour);
    xcb_poly_segment(connection_.get(), connection_.root(), context_, 1, &way);
    connection_.synchronise();
}

void Canvas::drawStop(MainPoint point, const std::string& title) {
    const auto centre = layout_.toRoot(point);
    const xcb_arc_t mark{.x = narrow(centre.x - markRadius),
                         .y = narrow(centre.y - markRadius),
                         .width = 2 * markRadius,
                         .height = 2 * markRadius,
                         .angle1 = 0,
                         .angle2 = fullCircle};
    setColour(wayColour);
    xcb_poly_fill_arc(connection_.get(), connection_.root(), context_, 1, &mark);
    drawText({.x = point.x + 2 * markRadius, .y = point.y - markRadius}, title);
    connection_.synchronise();
}

}  // namespace vantrel::desk
