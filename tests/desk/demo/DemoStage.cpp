#include "tests/desk/demo/DemoStage.hpp"

#include <cairo/cairo-xcb.h>

#include <numbers>
#include <stdexcept>

namespace vantrel::desk {

namespace {

constexpr unsigned backgroundColour = 0x1C2128;
constexpr unsigned mainColour = 0x1F4E79;
constexpr unsigned secondColour = 0x4A3B6B;
constexpr unsigned frameColour = 0x0D1117;
constexpr unsigned titleColour = 0xFFFFFF;
constexpr unsigned noteColour = 0xAFC6DD;
constexpr unsigned placeColour = 0xFFC000;
constexpr unsigned keyColour = 0x373E47;
constexpr unsigned heldKeyColour = 0xFFC000;

constexpr double keyTop = 376;
constexpr double keyHeight = 36;
constexpr double keyTextSize = 16;

xcb_visualtype_t* visualOf(XConnection& connection) {
    const auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    for (auto depths = xcb_screen_allowed_depths_iterator(screens.data); depths.rem > 0; xcb_depth_next(&depths)) {
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0; xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id == screens.data->root_visual) {
                return visuals.data;
            }
        }
    }
    throw std::runtime_error("the root window has no visual");
}

}  // namespace

DemoStage::DemoStage(XConnection& connection)
    : connection_(connection),
      surface_(cairo_xcb_surface_create(connection.get(), connection.root(), visualOf(connection), width, height)),
      context_(cairo_create(surface_.get())) {}

void DemoStage::setColour(unsigned colour) {
    constexpr double full = 255;
    cairo_set_source_rgb(context_.get(), (colour >> 16U & 0xFFU) / full, (colour >> 8U & 0xFFU) / full,
                         (colour & 0xFFU) / full);
}

void DemoStage::drawText(double x, double y, double size, unsigned colour, const std::string& text) {
    setColour(colour);
    cairo_set_font_size(context_.get(), size);
    cairo_move_to(context_.get(), x, y);
    cairo_show_text(context_.get(), text.c_str());
}

void DemoStage::roundedRectangle(double x, double y, double rectangleWidth, double rectangleHeight, double radius) {
    constexpr double quarter = std::numbers::pi / 2;
    cairo_t* const context = context_.get();
    cairo_new_sub_path(context);
    cairo_arc(context, x + rectangleWidth - radius, y + radius, radius, -quarter, 0);
    cairo_arc(context, x + rectangleWidth - radius, y + rectangleHeight - radius, radius, 0, quarter);
    cairo_arc(context, x + radius, y + rectangleHeight - radius, radius, quarter, 2 * quarter);
    cairo_arc(context, x + radius, y + radius, radius, 2 * quarter, 3 * quarter);
    cairo_close_path(context);
}

void DemoStage::drawDisplay(const MainRect& bounds, unsigned colour, const std::string& title) {
    constexpr double frame = 6;
    constexpr double radius = 8;
    setColour(frameColour);
    roundedRectangle(bounds.x, bounds.y, bounds.width, bounds.height, radius);
    cairo_fill(context_.get());
    setColour(colour);
    roundedRectangle(bounds.x + frame, bounds.y + frame, bounds.width - 2 * frame, bounds.height - 2 * frame,
                     radius / 2);
    cairo_fill(context_.get());
    drawText(bounds.x + 24, bounds.y + 42, 20, titleColour, title);
    drawText(bounds.x + 24, bounds.y + 64, 14, noteColour,
             std::to_string(bounds.width) + " × " + std::to_string(bounds.height) + " at (" + std::to_string(bounds.x) +
                 ", " + std::to_string(bounds.y) + ")");
}

void DemoStage::drawPlace(MainPoint place) {
    constexpr double radius = 14;
    setColour(placeColour);
    cairo_set_line_width(context_.get(), 2);
    cairo_new_sub_path(context_.get());
    cairo_arc(context_.get(), place.x, place.y, radius, 0, 2 * std::numbers::pi);
    cairo_stroke(context_.get());
    drawText(place.x + radius + 8, place.y + 5, 14, placeColour, "left here");
}

double DemoStage::drawKey(double x, const std::string& title, bool isHeld) {
    constexpr double margin = 14;
    constexpr double gap = 8;
    cairo_set_font_size(context_.get(), keyTextSize);
    cairo_text_extents_t extents;
    cairo_text_extents(context_.get(), title.c_str(), &extents);
    const double keyWidth = extents.x_advance + 2 * margin;
    setColour(isHeld ? heldKeyColour : keyColour);
    roundedRectangle(x, keyTop, keyWidth, keyHeight, 6);
    cairo_fill(context_.get());
    drawText(x + margin, keyTop + 24, keyTextSize, isHeld ? frameColour : titleColour, title);
    return x + keyWidth + gap;
}

void DemoStage::draw(const std::vector<MainPoint>& places, int heldKeys, const std::string& sentence) {
    // All at once, so that no recorded frame shows half of it.
    cairo_push_group(context_.get());
    setColour(backgroundColour);
    cairo_paint(context_.get());
    cairo_select_font_face(context_.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
    drawDisplay(mainDisplay, mainColour, "Main display");
    drawDisplay(secondDisplay, secondColour, "Second display");
    for (const auto& place : places) {
        drawPlace(place);
    }
    double x = 24;
    int key = 0;
    for (const char* title : {"Ctrl", "Alt", "Shift", "Super", "D"}) {
        x = drawKey(x, title, key < heldKeys);
        ++key;
    }
    drawText(x + 20, keyTop + 24, keyTextSize, titleColour, sentence);
    cairo_pop_group_to_source(context_.get());
    cairo_paint(context_.get());
    cairo_surface_flush(surface_.get());
    connection_.synchronise();
}

}  // namespace vantrel::desk
