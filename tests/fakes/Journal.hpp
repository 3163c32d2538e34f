#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::fake {

/// The calls that reached the fakes of one platform, in the order in which they came: the operation's name, then its
/// arguments in parentheses, if any: "CGWarpMouseCursorPosition(-512, 484)".
using Journal = std::vector<std::string>;

/// The entries of these operations only, in order.
Journal entriesOf(const Journal& journal, std::initializer_list<std::string_view> operations);

/// The shortest decimal text of the number, without a locale.
std::string journalText(double number);

}  // namespace vantrel::fake
