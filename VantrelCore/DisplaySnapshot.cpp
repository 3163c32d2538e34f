#include "VantrelCore/DisplaySnapshot.hpp"

namespace vantrel {

DisplaySnapshot::DisplaySnapshot(std::uint32_t displayID, const CGRect& bounds)
    : id(displayID),
      minX(CGRectGetMinX(bounds)),
      minY(CGRectGetMinY(bounds)),
      width(CGRectGetWidth(bounds)),
      height(CGRectGetHeight(bounds)) {}

CGRect DisplaySnapshot::rect() const {
    return CGRect{{minX, minY}, {width, height}};
}

VantrelPoint DisplaySnapshot::center() const {
    return VantrelPoint{minX + width * 0.5, minY + height * 0.5};
}

bool DisplaySnapshot::contains(const VantrelPoint& point) const {
    return CGRectContainsPoint(rect(), point.cgPoint());
}

}  // namespace vantrel
