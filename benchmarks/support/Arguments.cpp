#include "benchmarks/support/Arguments.hpp"

#include <charconv>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <optional>

namespace vantrel::bench {

namespace {

std::optional<int> numberFrom(const char* text, int smallest) {
    int number = 0;
    const char* const end = text + std::strlen(text);
    const auto result = std::from_chars(text, end, number);
    return result.ec == std::errc() && result.ptr == end && number >= smallest ? std::optional(number) : std::nullopt;
}

int complainAboutUsage(const char* program, const std::vector<NumberArgument>& numbers) {
    std::fprintf(stderr, "usage: %s", program);
    for (const NumberArgument& number : numbers) {
        std::fprintf(stderr, " [%s (%d)]", number.name.c_str(), number.usual);
    }
    std::fprintf(stderr, "\n");
    return 2;
}

}  // namespace

int runBenchmark(int count, char** arguments, const std::vector<NumberArgument>& numbers,
                 const std::function<void(const std::vector<int>&)>& measure) {
    const auto given = static_cast<std::size_t>(count - 1);
    if (given > numbers.size()) {
        return complainAboutUsage(arguments[0], numbers);
    }
    std::vector<int> values;
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        const auto value = index < given ? numberFrom(arguments[index + 1], numbers[index].smallest)
                                         : std::optional(numbers[index].usual);
        if (!value) {
            return complainAboutUsage(arguments[0], numbers);
        }
        values.push_back(*value);
    }
    try {
        measure(values);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", arguments[0], error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

}  // namespace vantrel::bench
