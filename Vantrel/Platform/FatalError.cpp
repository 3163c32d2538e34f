#include "Vantrel/Platform/FatalError.hpp"

#include <cstdio>
#include <cstdlib>

namespace vantrel {

void fatalError(std::string_view message) {
    std::fprintf(stderr, "vantrel: Fatal error: %.*s\n", static_cast<int>(message.size()), message.data());
    std::fflush(stderr);
    std::abort();
}

}  // namespace vantrel
