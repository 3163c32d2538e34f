#pragma once

namespace vantrel {

/// A point of the global display space, as the platform's display and pointer services give and take it.
struct CGPoint {
    double x = 0;
    double y = 0;

    bool operator==(const CGPoint&) const = default;
};

/// A size in points. May be negative, in which case the rectangle that has it extends to the left of or above its
/// origin.
struct CGSize {
    double width = 0;
    double height = 0;

    bool operator==(const CGSize&) const = default;
};

/// A rectangle of the global display space.
struct CGRect {
    CGPoint origin;
    CGSize size;

    bool operator==(const CGRect&) const = default;
};

/// The same area with a size that is not negative: the origin moves to the smaller edge.
CGRect CGRectStandardize(const CGRect& rect);

/// The rectangle that contains nothing: its origin lies at infinity.
CGRect CGRectNull();

/// True for the rectangle of CGRectNull() and for every other one whose origin lies at positive infinity.
bool CGRectIsNull(const CGRect& rect);

/// The left edge of the standardised rectangle.
double CGRectGetMinX(const CGRect& rect);

/// The top edge of the standardised rectangle (y grows downwards).
double CGRectGetMinY(const CGRect& rect);

/// The width of the standardised rectangle, never negative.
double CGRectGetWidth(const CGRect& rect);

/// The height of the standardised rectangle, never negative.
double CGRectGetHeight(const CGRect& rect);

/// Whether the point lies in the standardised rectangle. The left and top edges belong to it, the right and bottom
/// edges do not, so displays that touch never share a point. An empty or null rectangle and a NaN coordinate give
/// false.
bool CGRectContainsPoint(const CGRect& rect, const CGPoint& point);

}  // namespace vantrel
