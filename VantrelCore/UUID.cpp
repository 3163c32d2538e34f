#include "VantrelCore/UUID.hpp"

#include <charconv>
#include <cstddef>

namespace vantrel {

namespace {

constexpr std::size_t textLength = 36;
constexpr std::string_view upperCaseDigits = "0123456789ABCDEF";

constexpr bool isHyphenPosition(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
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
        const char* const digits = text.data() + position;
        position += 2;
        if (std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2) {
            return std::nullopt;
        }
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
