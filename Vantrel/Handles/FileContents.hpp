#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace vantrel {

/// What the file holds; none when it cannot be read, or is no regular file: a pipe would be waited for. (Not by a
/// stream: scripts/check tells what those would cost.)
std::optional<std::string> contentsOf(const std::filesystem::path& file);

}  // namespace vantrel
