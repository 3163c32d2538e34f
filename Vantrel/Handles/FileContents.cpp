#include "Vantrel/Handles/FileContents.hpp"

#include <system_error>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel {

std::optional<std::string> contentsOf(const std::filesystem::path& file) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(file, ignored)) {
        return std::nullopt;
    }
    gchar* contents = nullptr;
    gsize length = 0;
    if (!g_file_get_contents(file.c_str(), &contents, &length, nullptr)) {
        return std::nullopt;
    }
    const GCharPointer owner(contents);
    return std::string(contents, length);
}

}  // namespace vantrel
