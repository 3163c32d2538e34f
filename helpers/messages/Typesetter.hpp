#pragma once

#include <string>

#include "helpers/messages/CairoHandles.hpp"

namespace vantrel::overlay {

/// A size in pixels.
struct Size {
    int width = 0;
    int height = 0;
};

struct Font {
    double points = 10;
    bool isSemibold = false;
};

/// One line of text, ready to be measured and drawn.
class TextLine {
  public:
    explicit TextLine(LayoutPointer layout) : layout_(std::move(layout)) {}

    [[nodiscard]] Size size() const;

    /// Draws the line with its top-left corner at the place, in the context's colour.
    void draw(cairo_t* context, double x, double y) const;

  private:
    LayoutPointer layout_;
};

/// Sets text in the system's font.
class Typesetter {
  public:
    explicit Typesetter(double dotsPerInch);

    /// The text (UTF-8) in one line, cut with an ellipsis where it would be wider than `widest` pixels.
    [[nodiscard]] TextLine line(const std::string& text, const Font& font, int widest) const;

  private:
    FontMapPointer fonts_;
    ContextPointer context_;
};

}  // namespace vantrel::overlay
