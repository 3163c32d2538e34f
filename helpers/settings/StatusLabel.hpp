#pragma once

#include <QLabel>

#include "Vantrel/Interface/PreferencesWindowView.hpp"

namespace vantrel::qt {

/// A wrapping text in a semantic colour.
class TintedLabel : public QLabel {
  public:
    explicit TintedLabel(SemanticColor color, const QString& text = {});

    void setSemanticColor(SemanticColor color) { color_ = color; }

    /// Takes the colours of the theme, given as the window's palette.
    void tint(const QPalette& theme);

  private:
    SemanticColor color_;
};

/// A text whose changes a screen reader speaks.
class StatusLabel final : public TintedLabel {
  public:
    StatusLabel();

    void announce(const QString& text, SemanticColor color);
};

}  // namespace vantrel::qt
