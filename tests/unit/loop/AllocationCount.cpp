#include "tests/unit/loop/AllocationCount.hpp"

#include <cstdlib>
#include <new>

namespace {
std::size_t allocations = 0;
}

// The linker puts these in the place of the library's. They are what owns memory elsewhere.
// NOLINTBEGIN(cppcoreguidelines-owning-memory)
void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
// NOLINTEND(cppcoreguidelines-owning-memory)

namespace vantrel::desktop {

std::size_t allocationCount() {
    return allocations;
}

}  // namespace vantrel::desktop
