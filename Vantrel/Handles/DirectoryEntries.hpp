#pragma once

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace vantrel {

/// The paths of what stands in the directory, sorted, as far as it can be read. (A loop over the library's iterator
/// would throw where reading on fails.)
inline std::vector<std::filesystem::path> entriesOf(const std::filesystem::path& directory) {
    std::vector<std::filesystem::path> paths;
    std::error_code error;
    for (auto entry = std::filesystem::directory_iterator(directory, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        paths.push_back(entry->path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

}  // namespace vantrel
