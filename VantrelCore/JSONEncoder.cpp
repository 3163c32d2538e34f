#include "VantrelCore/JSONEncoder.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

namespace vantrel {

namespace {

/// What an element takes at most besides its name; a little too much costs nothing, a second allocation does.
constexpr std::size_t positionReserve = 48;
constexpr std::size_t savedPointReserve = 160;

/// Text of bounded length, put together on the stack so that it reaches the string in one append: a display jump
/// writes every remembered position between the key press and the pointer's move.
class ShortText {
  public:
    ShortText& operator<<(std::string_view text) {
        end_ = std::copy(text.begin(), text.end(), end_);
        return *this;
    }

    ShortText& operator<<(std::uint32_t number) {
        end_ = std::to_chars(end_, end_ + longestNumber, number).ptr;
        return *this;
    }

    /// The number must be finite.
    ShortText& operator<<(double number) {
        if (number == 0 && std::signbit(number)) {
            // Readers take "-0" for the integer 0, which has no sign.
            return *this << "-0.0";
        }
        // Whole numbers are what a pointer position nearly always is: the integer form is faster to write, and without
        // an exponent for 100000. All of them up to here have their own 64-bit float.
        constexpr double largestExactInteger = 9007199254740992.0;
        if (std::abs(number) <= largestExactInteger && number == std::trunc(number)) {
            end_ = std::to_chars(end_, end_ + longestNumber, static_cast<std::int64_t>(number)).ptr;
        } else {
            end_ = std::to_chars(end_, end_ + longestNumber, number).ptr;
        }
        return *this;
    }

    ShortText& operator<<(const VantrelPoint& point) {
        return *this << R"({"x":)" << point.x << R"(,"y":)" << point.y << "}";
    }

    [[nodiscard]] std::string_view text() const {
        return {buffer_.data(), static_cast<std::size_t>(end_ - buffer_.data())};
    }

  private:
    static constexpr std::ptrdiff_t longestNumber = 24;  // a double's shortest form

    /// The longest text is a display: five numbers and the member names.
    std::array<char, 192> buffer_;
    char* end_ = buffer_.data();
};

bool isEncodable(const VantrelPoint& point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

/// The text as a JSON string; none when it is not UTF-8.
std::optional<std::string> quoted(const std::string& text) {
    using nlohmann::json;
    // What is not UTF-8 is left out, and missed when the result is read again.
    std::string result = json(text).dump(-1, ' ', false, json::error_handler_t::ignore);
    return json::parse(result, nullptr, false) == text ? std::optional(std::move(result)) : std::nullopt;
}

/// False when the saved point has no JSON form; the text then holds nothing of use.
bool append(std::string& text, const SavedPoint& savedPoint) {
    const auto name = quoted(savedPoint.name);
    if (!isEncodable(savedPoint.point) || !name) {
        return false;
    }
    text += R"({"id":")";
    text += savedPoint.id.uuidString();
    text += R"(","name":)";
    text += *name;
    ShortText rest;
    rest << R"(,"point":)" << savedPoint.point;
    if (savedPoint.displayID) {
        rest << R"(,"displayID":)" << *savedPoint.displayID;
    }
    rest << "}";
    text += rest.text();
    return true;
}

}  // namespace

std::optional<std::string> JSONEncoder::encode(const VantrelPoint& point) const {
    if (!isEncodable(point)) {
        return std::nullopt;
    }
    ShortText text;
    text << point;
    return std::string(text.text());
}

std::optional<std::string> JSONEncoder::encode(const DisplaySnapshot& display) const {
    if (!std::isfinite(display.minX) || !std::isfinite(display.minY) || !std::isfinite(display.width) ||
        !std::isfinite(display.height)) {
        return std::nullopt;
    }
    ShortText text;
    text << R"({"id":)" << display.id << R"(,"minX":)" << display.minX << R"(,"minY":)" << display.minY
         << R"(,"width":)" << display.width << R"(,"height":)" << display.height << "}";
    return std::string(text.text());
}

std::optional<std::string> JSONEncoder::encode(const SavedPoint& savedPoint) const {
    std::string text;
    text.reserve(savedPointReserve + savedPoint.name.size());
    if (!append(text, savedPoint)) {
        return std::nullopt;
    }
    return text;
}

std::optional<std::string> JSONEncoder::encode(std::span<const SavedPoint> savedPoints) const {
    std::string text;
    text.reserve(2 + savedPoints.size() * savedPointReserve);
    text += '[';
    for (const SavedPoint& savedPoint : savedPoints) {
        if (text.size() > 1) {
            text += ',';
        }
        if (!append(text, savedPoint)) {
            return std::nullopt;
        }
    }
    text += ']';
    return text;
}

std::optional<std::string> JSONEncoder::encode(const RememberedPositions& positions) const {
    std::string text;
    text.reserve(2 + positions.size() * positionReserve);
    text += '{';
    for (const auto& [displayID, point] : positions) {
        if (!isEncodable(point)) {
            return std::nullopt;
        }
        ShortText member;
        member << (text.size() > 1 ? ",\"" : "\"") << displayID << "\":" << point;
        text += member.text();
    }
    text += '}';
    return text;
}

}  // namespace vantrel
