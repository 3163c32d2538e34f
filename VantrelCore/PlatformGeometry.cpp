#include "VantrelCore/PlatformGeometry.hpp"

#include <limits>

namespace vantrel {

CGRect CGRectNull() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return CGRect{{infinity, infinity}, {0, 0}};
}

bool CGRectIsNull(const CGRect& rect) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return rect.origin.x == infinity || rect.origin.y == infinity;
}

CGRect CGRectStandardize(const CGRect& rect) {
    if (CGRectIsNull(rect)) {
        return CGRectNull();
    }
    CGRect standard = rect;
    if (standard.size.width < 0) {
        standard.origin.x += standard.size.width;
        standard.size.width = -standard.size.width;
    }
    if (standard.size.height < 0) {
        standard.origin.y += standard.size.height;
        standard.size.height = -standard.size.height;
    }
    return standard;
}

double CGRectGetMinX(const CGRect& rect) {
    return CGRectStandardize(rect).origin.x;
}

double CGRectGetMinY(const CGRect& rect) {
    return CGRectStandardize(rect).origin.y;
}

double CGRectGetWidth(const CGRect& rect) {
    return CGRectStandardize(rect).size.width;
}

double CGRectGetHeight(const CGRect& rect) {
    return CGRectStandardize(rect).size.height;
}

bool CGRectContainsPoint(const CGRect& rect, const CGPoint& point) {
    const CGRect area = CGRectStandardize(rect);
    return point.x >= area.origin.x && point.x < area.origin.x + area.size.width && point.y >= area.origin.y &&
           point.y < area.origin.y + area.size.height;
}

}  // namespace vantrel
