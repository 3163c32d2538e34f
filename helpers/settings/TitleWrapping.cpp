#include "helpers/settings/TitleWrapping.hpp"

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
        std::string longerLine = line;
        longerLine.append(line.empty() ? "" : " ").append(piece);
        if (!line.empty() && textWidth(longerLine) > width) {
            lines.append(line).append("\n");
            line = std::move(piece);
        } else {
            line = std::move(longerLine);
        }
    }
    return lines + line;
}

}  // namespace vantrel::qt
