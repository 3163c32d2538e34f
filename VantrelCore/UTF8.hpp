#pragma once

#include <string_view>

namespace vantrel {

/// Whether the text is well-formed UTF-8 as the Unicode standard defines it: no overlong forms, no surrogates, nothing
/// above U+10FFFF. NUL is a character like any other.
[[nodiscard]] bool isValidUTF8(std::string_view text);

}  // namespace vantrel
