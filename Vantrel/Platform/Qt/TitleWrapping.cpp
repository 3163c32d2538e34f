#include "Vantrel/Platform/Qt/TitleWrapping.hpp"

namespace vantrel::qt {

std::string wrappedShortcut(const std::string& text, int width, const std::function<int(std::string_view)>& textWidth) {
    constexpr std::string_view separator = " + ";
    std::string lines;
    std::string line;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = text.find(separator, begin);
        const bool isLast = end == std::string::npos;
        std::string piece = isLast ? text.substr(begin) : text.substr(begin, end - begin) + " +";
        begin = isLast ? text.size() : end + separator.size();
        if (!line.empty() && textWidth(line + " " + piece) > width) {
            lines += line + "\n";
            line = std::move(piece);
        } else {
            line += (line.empty() ? "" : " ") + piece;
        }
    }
    return lines + line;
}

}  // namespace vantrel::qt
