#pragma once

#include <string>

#include "helpers/messages/CairoHandles.hpp"

namespace vantrel::overlay {

/// A size in pixels.
struct Size {
    int width = 0;
    int height = 0;

    bool operator==(const Size&) const = default;
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

/// Sets text in the system's font, and scales what surrounds it alike.
class Typesetter {
  public:
    /// What lengths are meant for, and what is taken where a desktop asks for nothing else.
    static constexpr double usualDotsPerInch = 96;

    explicit Typesetter(double dotsPerInch = usualDotsPerInch);

    /// The text (UTF-8) in one line, cut with an ellipsis where it would be wider than `widest` pixels.
    [[nodiscard]] TextLine line(const std::string& text, const Font& font, int widest) const;

    /// Pixels for lengths given at 96 dots per inch.
    [[nodiscard]] int scaled(double length) const;

  private:
    double dotsPerInch_;
    FontMapPointer fonts_;
    ContextPointer context_;
};

}  // namespace vantrel::overlay
