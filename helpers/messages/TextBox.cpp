#include "helpers/messages/TextBox.hpp"

#include <algorithm>

#include "helpers/messages/Palette.hpp"

namespace vantrel::overlay {

namespace {

constexpr double distanceFromTop = 48;  // clear of a panel
constexpr double sidePadding = 18;
constexpr double verticalPadding = 9;
constexpr double cornerRadiusAtUsualResolution = 10;
constexpr double widestShare = 0.6;  // of the display's width

}  // namespace

TextBox::TextBox(const Typesetter& typesetter, const std::string& text, const Font& font, const Rect& display)
    : typesetter_(typesetter), line_(typesetter.line(text, font, static_cast<int>(display.width * widestShare))) {
    const Size size = line_.size();
    const int width = size.width + 2 * typesetter.scaled(sidePadding);
    bounds_ = {.x = display.x + (display.width - width) / 2,
               .y = display.y + std::min(typesetter.scaled(distanceFromTop), display.height / 8),
               .width = width,
               .height = size.height + 2 * typesetter.scaled(verticalPadding)};
}

int TextBox::cornerRadius() const {
    return typesetter_.scaled(cornerRadiusAtUsualResolution);
}

void TextBox::draw(cairo_t* context, bool isTranslucent) const {
    drawGround(context, bounds_.width, bounds_.height, cornerRadius(), isTranslucent);
    setColor(context, textColor);
    line_.draw(context, typesetter_.scaled(sidePadding), typesetter_.scaled(verticalPadding));
}

}  // namespace vantrel::overlay
