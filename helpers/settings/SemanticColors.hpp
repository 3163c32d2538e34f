#pragma once

#include <QColor>
#include <QPalette>

#include "Vantrel/Interface/PreferencesWindowView.hpp"

namespace vantrel::qt {

/// The contrast of two opaque colours, from 1 (none) to 21 (black on white), as WCAG 2 defines it.
double contrastRatio(const QColor& first, const QColor& second);

/// What a semantic colour looks like on the palette's window background, in light and dark themes alike: at least 4.5:1
/// against it, wherever the theme's own text has that much.
QColor semanticColor(SemanticColor color, const QPalette& palette);

}  // namespace vantrel::qt
