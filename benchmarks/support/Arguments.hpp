#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vantrel::bench {

/// A number that a benchmark takes on its command line.
struct NumberArgument {
    std::string name;  ///< as the usage shows it: "PRESSES"
    int usual = 0;     ///< when it is not given
    int smallest = 1;
};

/// The body of a benchmark's main(): reads the numbers, measures, and turns an exception into a line on stderr.
/// Returns the exit status: 2 for a wrong argument.
int runBenchmark(int count, char** arguments, const std::vector<NumberArgument>& numbers,
                 const std::function<void(const std::vector<int>&)>& measure);

}  // namespace vantrel::bench
