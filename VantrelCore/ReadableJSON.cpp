#include "VantrelCore/ReadableJSON.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>

namespace vantrel {

namespace {

struct Token {
    std::size_t length = 1;
    bool isReadable = true;
};

/// The number that the text begins with, by JSON's grammar; a single character when there is none.
Token numberAtStart(std::string_view text) {
    std::size_t at = text.starts_with('-') ? 1 : 0;
    const auto skip = [&](std::string_view characters) {
        const std::size_t start = at;
        at = std::min(text.find_first_not_of(characters, at), text.size());
        return at - start;
    };
    const auto has = [&](std::string_view characters) {
        return at < text.size() && characters.find(text[at]) != std::string_view::npos;
    };
    constexpr std::string_view digits = "0123456789";
    const bool beginsWithZero = has("0");
    const std::size_t integerDigits = skip(digits);
    if (integerDigits == 0 || (beginsWithZero && integerDigits > 1)) {
        return {};
    }
    if (has(".") && (++at, skip(digits) == 0)) {
        return {};
    }
    if (has("eE")) {
        ++at;
        if (has("+-")) {
            ++at;
        }
        if (skip(digits) == 0) {
            return {};
        }
    }
    return {at, std::isfinite(std::strtod(std::string(text.substr(0, at)).c_str(), nullptr))};
}

constexpr std::size_t escapedUnitLength = 6;

/// The UTF-16 unit of the escape \uXXXX that the text begins with; 0 when it begins with anything else.
unsigned escapedUnit(std::string_view text) {
    text = text.substr(0, escapedUnitLength);
    const char* const end = text.data() + text.size();
    unsigned unit = 0;
    const bool isEscape = text.size() == escapedUnitLength && text.starts_with("\\u") &&
                          std::from_chars(text.data() + 2, end, unit, 16).ptr == end;
    return isEscape ? unit : 0;
}

/// The string that the text begins with, quotes included, or the rest of the text when it never ends.
Token stringAtStart(std::string_view text) {
    Token token;
    bool isHalf = false;  // the unit before was the first half of a character
    while (token.length < text.size() && text[token.length] != '"') {
        const unsigned unit = escapedUnit(text.substr(token.length));
        const bool isSecondHalf = unit >= 0xDC00 && unit <= 0xDFFF;
        token.isReadable = token.isReadable && isHalf == isSecondHalf;
        isHalf = unit >= 0xD800 && unit < 0xDC00;
        // Whatever is escaped, a quote above all, is no end of the string; the digits of a unit are plain characters.
        const bool isEscape = text[token.length] == '\\';
        token.length += unit != 0 ? escapedUnitLength : isEscape ? std::size_t{2} : std::size_t{1};
    }
    token.isReadable = token.isReadable && !isHalf;
    token.length = std::min(token.length + 1, text.size());
    return token;
}

bool isMemberName(std::string_view textAfter) {
    const std::size_t next = textAfter.find_first_not_of(" \t\r\n");
    return next != std::string_view::npos && textAfter[next] == ':';
}

}  // namespace

std::string readableJSON(std::string_view json) {
    std::string result;
    result.reserve(json.size());
    while (!json.empty()) {
        const bool isString = json.front() == '"';
        const Token token = isString ? stringAtStart(json) : numberAtStart(json);
        const std::string_view text = json.substr(0, token.length);
        json.remove_prefix(token.length);
        if (token.isReadable) {
            result += text;
        } else {
            result += isString && isMemberName(json) ? R"("")" : "false";
        }
    }
    return result;
}

}  // namespace vantrel
