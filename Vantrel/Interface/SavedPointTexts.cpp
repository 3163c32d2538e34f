#include "Vantrel/Interface/SavedPointTexts.hpp"

#include "Vantrel/Platform/FatalError.hpp"

#include <cmath>
#include <cstdint>

namespace vantrel {

namespace {

std::string integerText(double coordinate) {
    // 2^63 itself no longer fits; both bounds are exact as doubles. NaN fails both comparisons.
    constexpr double limit = 9223372036854775808.0;
    const double rounded = std::round(coordinate);
    if (!(rounded >= -limit && rounded < limit)) {
        fatalError("A saved point's coordinate cannot be rounded to a 64-bit integer");
    }
    return std::to_string(static_cast<std::int64_t>(rounded));
}

}  // namespace

std::string savedPointRowText(const SavedPoint& savedPoint) {
    std::string text =
        savedPoint.name + " - x " + integerText(savedPoint.point.x) + ", y " + integerText(savedPoint.point.y);
    if (savedPoint.displayID) {
        text += ", display " + std::to_string(*savedPoint.displayID);
    }
    return text;
}

std::string savedPointsSummary(std::size_t count) {
    switch (count) {
        case 0:
            return "No saved cursor points.";
        case 1:
            return "1 saved cursor point.";
        default:
            return std::to_string(count) + " saved cursor points.";
    }
}

}  // namespace vantrel
