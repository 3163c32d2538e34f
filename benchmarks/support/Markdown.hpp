#pragma once

#include <string>
#include <vector>

namespace vantrel::bench {

/// Prints the head of a table, ready for docs/performance.md.
void printTableHead(const std::vector<std::string>& titles);

/// Prints a row of that table. What was measured is told at once, not when the program ends.
void printTableRow(const std::vector<std::string>& cells);

/// "137 us", and from ten milliseconds on "25.5 ms".
std::string timeText(double microseconds);

/// "2,500"; for numbers from 0 to 999,999.
std::string groupedText(long number);

/// With so many decimals: "1.04".
std::string numberText(double number, int decimals);

}  // namespace vantrel::bench
