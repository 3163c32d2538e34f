#include "VantrelCore/JSONDecoder.hpp"

#include <locale.h>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>

#include <nlohmann/json.hpp>

#include "VantrelCore/ReadableJSON.hpp"

namespace vantrel {

namespace {

using nlohmann::json;

/// The C locale for this thread while it lives. The JSON reader takes the decimal point for strtod from the locale, but
/// only its first byte: with U+066B, as in Pashto and Persian, 5.5 would be read as 5.
class CLocaleScope {
  public:
    CLocaleScope() = default;
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;
    ~CLocaleScope() {
        uselocale(previous_);
        if (c_ != nullptr) {
            freelocale(c_);
        }
    }

  private:
    locale_t c_ = newlocale(LC_ALL_MASK, "C", nullptr);
    locale_t previous_ = uselocale(c_);
};

/// The value that the whole text is; a discarded one, which has no type and no members, if it is not JSON. Never
/// throws; the reader and its values need no stack for deep nesting, and memory in proportion to the text.
json parsed(std::string_view text) {
    // JSON holds no raw NUL anywhere, but the reader takes one for the end of the text.
    if (text.find('\0') != std::string_view::npos) {
        return json::value_t::discarded;
    }
    const CLocaleScope cLocale;
    json value = json::parse(text.begin(), text.end(), nullptr, false);
    if (value.is_discarded()) {
        // The reader refuses the whole text for a number or a string that it cannot hold, also in an unknown member.
        value = json::parse(readableJSON(text), nullptr, false);
    }
    return value;
}

/// The member's value; null when the value is no object or has no such member.
const json* member(const json& value, const char* name) {
    const auto found = value.find(name);
    return found == value.end() ? nullptr : &*found;
}

std::optional<double> number(const json* value) {
    if (value == nullptr || !value->is_number()) {
        return std::nullopt;
    }
    return value->get<double>();
}

std::optional<std::uint32_t> unsigned32(const json* value) {
    const std::optional<double> found = number(value);
    // Each 32-bit integer has its own 64-bit float, and integers too large for that are out of range anyway.
    constexpr double highest = std::numeric_limits<std::uint32_t>::max();
    if (!found || *found < 0 || *found > highest || *found != std::trunc(*found)) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(*found);
}

const std::string* string(const json* value) {
    return value == nullptr ? nullptr : value->get_ptr<const std::string*>();
}

std::optional<VantrelPoint> point(const json* value) {
    if (value == nullptr) {
        return std::nullopt;
    }
    const std::optional<double> x = number(member(*value, "x"));
    const std::optional<double> y = number(member(*value, "y"));
    if (!x || !y) {
        return std::nullopt;
    }
    return VantrelPoint{*x, *y};
}

std::optional<SavedPoint> savedPoint(const json& value) {
    const std::string* const idText = string(member(value, "id"));
    const std::optional<UUID> id = idText == nullptr ? std::nullopt : UUID::fromString(*idText);
    const std::string* const name = string(member(value, "name"));
    const std::optional<VantrelPoint> position = point(member(value, "point"));
    if (!id || name == nullptr || !position) {
        return std::nullopt;
    }
    SavedPoint result{*id, *name, *position, std::nullopt};
    const json* const displayID = member(value, "displayID");
    if (displayID != nullptr && !displayID->is_null()) {
        result.displayID = unsigned32(displayID);
        if (!result.displayID) {
            return std::nullopt;
        }
    }
    return result;
}

}  // namespace

std::optional<VantrelPoint> JSONDecoder::decodePoint(std::string_view json) const {
    const auto value = parsed(json);
    return point(&value);
}

std::optional<DisplaySnapshot> JSONDecoder::decodeDisplay(std::string_view json) const {
    const auto value = parsed(json);
    const std::optional<std::uint32_t> id = unsigned32(member(value, "id"));
    const std::optional<double> minX = number(member(value, "minX"));
    const std::optional<double> minY = number(member(value, "minY"));
    const std::optional<double> width = number(member(value, "width"));
    const std::optional<double> height = number(member(value, "height"));
    if (!id || !minX || !minY || !width || !height) {
        return std::nullopt;
    }
    return DisplaySnapshot{*id, *minX, *minY, *width, *height};
}

std::optional<SavedPoint> JSONDecoder::decodeSavedPoint(std::string_view json) const {
    return savedPoint(parsed(json));
}

std::optional<std::vector<SavedPoint>> JSONDecoder::decodeSavedPoints(std::string_view json) const {
    const auto value = parsed(json);
    if (!value.is_array()) {
        return std::nullopt;
    }
    std::vector<SavedPoint> list;
    list.reserve(value.size());
    for (const auto& element : value) {
        std::optional<SavedPoint> decoded = savedPoint(element);
        if (!decoded) {
            return std::nullopt;
        }
        list.push_back(std::move(*decoded));
    }
    return list;
}

std::optional<std::map<std::string, VantrelPoint>> JSONDecoder::decodePositions(std::string_view json) const {
    const auto value = parsed(json);
    if (!value.is_object()) {
        return std::nullopt;
    }
    std::map<std::string, VantrelPoint> positions;
    for (const auto& [name, element] : value.items()) {
        const std::optional<VantrelPoint> position = point(&element);
        if (!position) {
            return std::nullopt;
        }
        positions.emplace_hint(positions.end(), name, *position);
    }
    return positions;
}

}  // namespace vantrel
