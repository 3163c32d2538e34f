#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace vantrel {

/// What the file holds; none when it cannot be read. (Not by a stream: scripts/check tells what those would cost.)
std::optional<std::string> contentsOf(const std::filesystem::path& file);

/// Takes what stands before the next separator off the text, and the separator; none when nothing is left.
std::optional<std::string_view> takePiece(std::string_view& text, char separator);

}  // namespace vantrel
