#include "VantrelCore/UUID.hpp"

#include <cstddef>

namespace vantrel {

namespace {

constexpr std::size_t textLength = 36;
constexpr std::string_view upperCaseDigits = "0123456789ABCDEF";

constexpr bool isHyphenPosition(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

std::optional<unsigned> hexadecimalDigit(char character) {
    if (character >= '0' && character <= '9') {
        return static_cast<unsigned>(character - '0');
    }
    if (character >= 'A' && character <= 'F') {
        return static_cast<unsigned>(character - 'A' + 10);
    }
    if (character >= 'a' && character <= 'f') {
        return static_cast<unsigned>(character - 'a' + 10);
    }
    return std::nullopt;
}

}  // namespace

std::optional<UUID> UUID::fromString(std::string_view text) {
    if (text.size() != textLength) {
        return std::nullopt;
    }
    UUID uuid;
    std::size_t position = 0;
    for (std::uint8_t& byte : uuid.bytes) {
        if (isHyphenPosition(position)) {
            if (text[position] != '-') {
                return std::nullopt;
            }
            ++position;
        }
        const std::optional<unsigned> high = hexadecimalDigit(text[position]);
        const std::optional<unsigned> low = hexadecimalDigit(text[position + 1]);
        if (!high || !low) {
            return std::nullopt;
        }
        byte = static_cast<std::uint8_t>(*high * 16 + *low);
        position += 2;
    }
    return uuid;
}

std::string UUID::uuidString() const {
    std::string text;
    text.reserve(textLength);
    for (const std::uint8_t byte : bytes) {
        if (isHyphenPosition(text.size())) {
            text += '-';
        }
        text += upperCaseDigits[byte / 16];
        text += upperCaseDigits[byte % 16];
    }
    return text;
}

}  // namespace vantrel
