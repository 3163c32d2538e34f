#pragma once

#include <cstdlib>
#include <memory>

namespace vantrel::x11 {

/// Frees what xcb hands out with malloc: replies, events and errors.
struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }  // NOLINT(cppcoreguidelines-owning-memory)
};

template <typename Type>
using XcbPointer = std::unique_ptr<Type, FreeDeleter>;

/// Takes ownership of a reply, event or error (may be null).
template <typename Type>
XcbPointer<Type> adopt(Type* memory) {
    return XcbPointer<Type>(memory);
}

}  // namespace vantrel::x11
