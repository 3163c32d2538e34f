#include "Vantrel/Platform/DefaultsConversions.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>

namespace vantrel {
namespace {

constexpr std::int64_t smallestInteger = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largestInteger = std::numeric_limits<std::int64_t>::max();
constexpr double twoToThe63 = 9223372036854775808.0;
/// Up to here every integral double is an exact integer, so its digits are its decimal text.
constexpr double twoToThe53 = 9007199254740992.0;

struct SignedText {
    bool isNegative = false;
    std::string_view rest;
};

SignedText afterWhiteSpaceAndSign(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
    text.remove_prefix(start == std::string_view::npos ? text.size() : start);
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    return {isNegative, text};
}

bool boolFromText(std::string_view text) {
    std::string_view rest = afterWhiteSpaceAndSign(text).rest;
    const std::size_t start = rest.find_first_not_of('0');
    if (start == std::string_view::npos) {
        return false;
    }
    return std::string_view("YyTt123456789").find(rest[start]) != std::string_view::npos;
}

std::int64_t integerFromText(std::string_view text) {
    const auto [isNegative, rest] = afterWhiteSpaceAndSign(text);
    if (rest.empty() || rest.front() < '0' || rest.front() > '9') {
        return 0;
    }
    std::int64_t integer = 0;
    const char* const begin = rest.data() - (isNegative ? 1 : 0);
    const auto error = std::from_chars(begin, rest.data() + rest.size(), integer).ec;
    return error == std::errc() ? integer : isNegative ? smallestInteger : largestInteger;
}

std::int64_t integerFromReal(double real) {
    if (std::isnan(real)) {
        return 0;
    }
    if (real >= twoToThe63) {
        return largestInteger;
    }
    return real < -twoToThe63 ? smallestInteger : static_cast<std::int64_t>(real);
}

template <typename Number>
std::string shortestText(Number number) {
    std::array<char, 32> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    static_cast<void>(error);  // the longest shortest form of a double has 24 characters
    return {buffer.data(), end};
}

std::string textFromReal(double real) {
    const bool hasExactDigits = std::fabs(real) <= twoToThe53 && std::trunc(real) == real;
    return hasExactDigits ? shortestText(static_cast<std::int64_t>(real)) : shortestText(real);
}

}  // namespace

std::optional<std::string> stringFromDefaultsValue(const DefaultsValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return *text;
    }
    if (const auto* boolean = std::get_if<bool>(&value)) {
        return *boolean ? "1" : "0";
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        return shortestText(*integer);
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return textFromReal(*real);
    }
    return std::nullopt;
}

bool boolFromDefaultsValue(const DefaultsValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return boolFromText(*text);
    }
    if (const auto* boolean = std::get_if<bool>(&value)) {
        return *boolean;
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        return *integer != 0;
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return !std::isnan(*real) && *real != 0;
    }
    return false;
}

std::int64_t integerFromDefaultsValue(const DefaultsValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return integerFromText(*text);
    }
    if (const auto* boolean = std::get_if<bool>(&value)) {
        return *boolean ? 1 : 0;
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        return *integer;
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return integerFromReal(*real);
    }
    return 0;
}

std::optional<std::string> dataFromDefaultsValue(const DefaultsValue& value) {
    if (const auto* data = std::get_if<DefaultsData>(&value)) {
        return data->bytes;
    }
    return std::nullopt;
}

}  // namespace vantrel
