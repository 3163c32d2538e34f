#pragma once

#include <cairo/cairo.h>

namespace vantrel::overlay {

struct Color {
    double red;
    double green;
    double blue;
    double alpha = 1;
};

// Light text on a dark ground with a light rim: it stands out on any background.
inline constexpr Color groundColor{.red = 0.13, .green = 0.13, .blue = 0.14, .alpha = 0.95};
inline constexpr Color rimColor{.red = 0.48, .green = 0.48, .blue = 0.50};
inline constexpr Color textColor{.red = 0.96, .green = 0.96, .blue = 0.96};
inline constexpr Color disabledTextColor{.red = 0.62, .green = 0.62, .blue = 0.63};
inline constexpr Color chosenColor{.red = 0.18, .green = 0.42, .blue = 0.85};

inline void setColor(cairo_t* context, const Color& color) {
    cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha);
}

/// Draws the ground and the rim of a window of that size.
void drawGround(cairo_t* context, int width, int height, int cornerRadius, bool isTranslucent);

}  // namespace vantrel::overlay
