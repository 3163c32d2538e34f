#pragma once

#include <string_view>

namespace vantrel {

/// Prints the message on stderr and ends the process abnormally (SIGABRT). For states that must not go on: see
/// docs/design/controller.md, "Fatal errors".
[[noreturn]] void fatalError(std::string_view message);

}  // namespace vantrel
