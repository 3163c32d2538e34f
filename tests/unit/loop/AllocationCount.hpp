#pragma once

#include <cstddef>

namespace vantrel::desktop {

/// How often the program has asked for memory by operator new.
std::size_t allocationCount();

}  // namespace vantrel::desktop
