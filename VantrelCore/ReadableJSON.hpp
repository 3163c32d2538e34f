#pragma once

#include <string>
#include <string_view>

namespace vantrel {

/// The text with every value that JSON can write and that no reader can hold replaced by one that none of the stored
/// forms has: a number beyond all floats and a string with half of a character by `false`, such a member name by an
/// empty one. All else stays as it is; what is no JSON is none afterwards. To be called in the C locale.
std::string readableJSON(std::string_view json);

}  // namespace vantrel
