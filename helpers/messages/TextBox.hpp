#pragma once

#include <string>

#include "helpers/messages/Rect.hpp"
#include "helpers/messages/Typesetter.hpp"

namespace vantrel::overlay {

/// A short text in a box near the top of a display, in the middle.
class TextBox {
  public:
    /// The typesetter outlives this object.
    TextBox(const Typesetter& typesetter, const std::string& text, const Font& font, const Rect& display);

    [[nodiscard]] const Rect& bounds() const { return bounds_; }
    [[nodiscard]] int cornerRadius() const;

    /// Draws the box with its top-left corner at the context's origin.
    void draw(cairo_t* context, bool isTranslucent) const;

  private:
    const Typesetter& typesetter_;
    TextLine line_;
    Rect bounds_;
};

}  // namespace vantrel::overlay
