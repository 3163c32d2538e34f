#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "VantrelCore/DisplaySnapshot.hpp"
#include "VantrelCore/SavedPoint.hpp"
#include "VantrelCore/VantrelPoint.hpp"

namespace vantrel {

/// Reads the stored forms from any bytes. Each operation gives none when the bytes are not that form as a whole: one
/// damaged element fails its list, so nothing half-read is ever taken for the user's data. Unknown members are ignored,
/// whatever JSON lets them hold; of two members with the same name the last counts; a number with an integral value
/// (1.0) is an integer.
class JSONDecoder {
  public:
    [[nodiscard]] std::optional<VantrelPoint> decodePoint(std::string_view json) const;
    [[nodiscard]] std::optional<DisplaySnapshot> decodeDisplay(std::string_view json) const;
    [[nodiscard]] std::optional<SavedPoint> decodeSavedPoint(std::string_view json) const;
    [[nodiscard]] std::optional<std::vector<SavedPoint>> decodeSavedPoints(std::string_view json) const;

    /// The members of an object whose values are points, by member name as it stands. What the names mean is the
    /// reader's to decide.
    [[nodiscard]] std::optional<std::map<std::string, VantrelPoint>> decodePositions(std::string_view json) const;
};

}  // namespace vantrel
