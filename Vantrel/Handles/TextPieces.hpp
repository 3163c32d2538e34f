#pragma once

#include <optional>
#include <string_view>

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

}  // namespace vantrel
