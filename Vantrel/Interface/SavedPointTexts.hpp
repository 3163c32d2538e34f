#pragma once

#include <cstddef>
#include <string>

#include "VantrelCore/SavedPoint.hpp"

namespace vantrel {

/// "Desk - x 1512, y -240, display 2": coordinates to the nearest integer, halves away from zero. A coordinate that no
/// 64-bit integer stands for stops the program.
std::string savedPointRowText(const SavedPoint& savedPoint);

/// How many points there are, in words.
std::string savedPointsSummary(std::size_t count);

}  // namespace vantrel
