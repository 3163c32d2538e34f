#pragma once

#include <optional>
#include <span>
#include <string>

#include "VantrelCore/DisplaySnapshot.hpp"
#include "VantrelCore/RememberedPositions.hpp"
#include "VantrelCore/SavedPoint.hpp"
#include "VantrelCore/VantrelPoint.hpp"

namespace vantrel {

/// Writes the stored forms: compact UTF-8 JSON, coordinates in the shortest text that reads back to the same 64 bits
/// (10 rather than 10.0; -0.0 keeps its sign), identifiers as integers, UUIDs in upper case.
///
/// Each operation gives none when a coordinate is NaN or infinite, or a name is not UTF-8: JSON has no form for these,
/// and the caller keeps what it stored before.
class JSONEncoder {
  public:
    [[nodiscard]] std::optional<std::string> encode(const VantrelPoint& point) const;
    [[nodiscard]] std::optional<std::string> encode(const DisplaySnapshot& display) const;
    [[nodiscard]] std::optional<std::string> encode(const SavedPoint& savedPoint) const;

    /// An array in list order.
    [[nodiscard]] std::optional<std::string> encode(std::span<const SavedPoint> savedPoints) const;

    /// An object whose member names are the display identifiers in decimal.
    [[nodiscard]] std::optional<std::string> encode(const RememberedPositions& positions) const;
};

}  // namespace vantrel
