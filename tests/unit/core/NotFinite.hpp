#pragma once

#include <limits>

namespace vantrel {

inline constexpr double nan = std::numeric_limits<double>::quiet_NaN();
inline constexpr double infinity = std::numeric_limits<double>::infinity();

}  // namespace vantrel
