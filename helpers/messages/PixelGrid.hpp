#pragma once

#include "helpers/messages/Rect.hpp"

namespace vantrel::overlay {

/// The smallest rectangle around the one (in points) whose edges lie between whole pixels, where a point is `scale`
/// pixels (in steps of a 120th). What is drawn in it is shown pixel for pixel; otherwise a compositor that rounds edges
/// would stretch it by a pixel, which makes text look washed out.
Rect onPixelEdges(const Rect& rect, double scale);

}  // namespace vantrel::overlay
