#include "Vantrel/Handles/FileContents.hpp"

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel {

std::optional<std::string> contentsOf(const std::filesystem::path& file) {
    gchar* contents = nullptr;
    gsize length = 0;
    if (!g_file_get_contents(file.c_str(), &contents, &length, nullptr)) {
        return std::nullopt;
    }
    const GCharPointer owner(contents);
    return std::string(contents, length);
}

std::optional<std::string_view> takePiece(std::string_view& text, char separator) {
    if (text.empty()) {
        return std::nullopt;
    }
    const std::string_view piece = text.substr(0, text.find(separator));
    text.remove_prefix(piece.size() == text.size() ? text.size() : piece.size() + 1);
    return piece;
}

}  // namespace vantrel
