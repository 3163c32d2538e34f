#include "benchmarks/support/Markdown.hpp"

#include <array>
#include <cstdio>

namespace vantrel::bench {

void printTableHead(const std::vector<std::string>& titles) {
    printTableRow(titles);
    printTableRow(std::vector<std::string>(titles.size(), "---"));
}

void printTableRow(const std::vector<std::string>& cells) {
    for (const std::string& cell : cells) {
        std::printf("| %s ", cell.c_str());
    }
    std::printf("|\n");
    std::fflush(stdout);
}

std::string timeText(double microseconds) {
    constexpr double longTime = 10'000;
    if (microseconds >= longTime) {
        return numberText(microseconds / 1000, 1) + " ms";
    }
    constexpr double shortTime = 10;
    return numberText(microseconds, microseconds < shortTime ? 1 : 0) + " us";
}

std::string groupedText(long number) {
    std::array<char, 32> text{};
    if (number < 1000) {
        std::snprintf(text.data(), text.size(), "%ld", number);
    } else {
        std::snprintf(text.data(), text.size(), "%ld,%03ld", number / 1000, number % 1000);
    }
    return text.data();
}

std::string numberText(double number, int decimals) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, number);
    return text.data();
}

}  // namespace vantrel::bench
