#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace vantrel::desktop {

/// A part of the address space, from the first byte to the one after the last.
struct MemoryRange {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    bool operator==(const MemoryRange&) const = default;
};

/// A part of the address space that shows a part of a file.
struct FileMapping {
    MemoryRange range;
    std::string_view file;  ///< the path

    bool operator==(const FileMapping&) const = default;
};

/// The parts that hold nothing but what a file holds, unchanged and not to be changed, and so can be read from there
/// again at any time: code, constants, symbol tables. `smaps` is the text of /proc/self/smaps, which the result refers
/// to.
std::vector<FileMapping> unchangedFileMappings(std::string_view smaps);

}  // namespace vantrel::desktop
