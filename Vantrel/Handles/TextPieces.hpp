#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// Takes what stands before the next separator off the text, and the separator; none when nothing is left.
inline std::optional<std::string_view> takePiece(std::string_view& text, char separator) {
    if (text.empty()) {
        return std::nullopt;
    }
    const std::string_view piece = text.substr(0, text.find(separator));
    text.remove_prefix(piece.size() == text.size() ? text.size() : piece.size() + 1);
    return piece;
}

/// All pieces of the text, in order.
inline std::vector<std::string> piecesOf(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    while (const auto piece = takePiece(text, separator)) {
        pieces.emplace_back(*piece);
    }
    return pieces;
}

inline constexpr std::string_view blanks = " \t\r\n";

/// The text without the blanks at its beginning and its end.
inline std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

}  // namespace vantrel
