#pragma once

#include <cstdint>

#include "VantrelCore/VantrelPoint.hpp"

namespace vantrel {

/// A glide in progress.
struct CursorAnimation {
    VantrelPoint start;      ///< where the pointer was when the glide began
    VantrelPoint target;     ///< where it ends
    std::int64_t steps = 0;  ///< ticks in all
    std::int64_t step = 0;   ///< ticks done
};

}  // namespace vantrel
