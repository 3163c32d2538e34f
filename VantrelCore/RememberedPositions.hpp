#pragma once

#include <cstdint>
#include <unordered_map>

#include "VantrelCore/VantrelPoint.hpp"

namespace vantrel {

/// The last position of the pointer on each display that a display jump left, by display identifier. Entries of
/// displays that are gone stay: the display may come back.
using RememberedPositions = std::unordered_map<std::uint32_t, VantrelPoint>;

}  // namespace vantrel
