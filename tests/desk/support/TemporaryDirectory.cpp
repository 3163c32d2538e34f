#include "tests/desk/support/TemporaryDirectory.hpp"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace vantrel::desk {

TemporaryDirectory::TemporaryDirectory(std::string_view purpose) {
    std::string pattern = std::filesystem::temp_directory_path() / ("vantrel-" + std::string(purpose) + "-XXXXXX");
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot create a directory like " + pattern);
    }
    path_ = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace vantrel::desk
