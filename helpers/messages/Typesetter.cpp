#include "helpers/messages/Typesetter.hpp"

#include <cmath>

namespace vantrel::overlay {

Size TextLine::size() const {
    Size size;
    pango_layout_get_pixel_size(layout_.get(), &size.width, &size.height);
    return size;
}

void TextLine::draw(cairo_t* context, double x, double y) const {
    cairo_move_to(context, x, y);
    pango_cairo_show_layout(context, layout_.get());
}

Typesetter::Typesetter(double dotsPerInch) : dotsPerInch_(dotsPerInch), fonts_(pango_cairo_font_map_new()) {
    pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(fonts_.get()), dotsPerInch);
    context_.reset(pango_font_map_create_context(fonts_.get()));
}

int Typesetter::scaled(double length) const {
    return static_cast<int>(std::lround(length * dotsPerInch_ / usualDotsPerInch));
}

TextLine Typesetter::line(const std::string& text, const Font& font, int widest) const {
    LayoutPointer layout(pango_layout_new(context_.get()));
    const FontDescriptionPointer description(pango_font_description_from_string("Sans"));
    pango_font_description_set_size(description.get(), static_cast<int>(std::lround(font.points * PANGO_SCALE)));
    pango_font_description_set_weight(description.get(), font.isSemibold ? PANGO_WEIGHT_SEMIBOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout.get(), description.get());
    pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
    pango_layout_set_text(layout.get(), text.c_str(), -1);
    int width = 0;
    pango_layout_get_pixel_size(layout.get(), &width, nullptr);
    // Without a need for it a width would make right-to-left text stand at the far end.
    if (width > widest) {
        pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
        pango_layout_set_width(layout.get(), widest * PANGO_SCALE);
    }
    return TextLine(std::move(layout));
}

}  // namespace vantrel::overlay
