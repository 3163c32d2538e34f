#pragma once

#include <functional>
#include <string>
#include <vector>

#include "benchmarks/support/PressTiming.hpp"

namespace vantrel::bench {

/// Something to be compared: each call measures it once more, from its start to its end.
struct Contender {
    std::string name;
    std::function<PressTimes()> measure;
};

/// What the rounds of one contender gave, in microseconds.
struct Figures {
    std::string name;
    std::vector<double> medians;  ///< one a round
    std::vector<double> tails;    ///< the 99th percentiles
    int presses = 0;
    int lost = 0;

    /// The median round's.
    [[nodiscard]] double p50() const;
    [[nodiscard]] double p99() const;
    /// "0 of 2,500".
    [[nodiscard]] std::string lostText() const;
};

/// Measures the contenders in turn, round by round, each round beginning with another one: what slows the machine for a
/// while slows them all. The figures are in the order of the contenders.
std::vector<Figures> compare(const std::vector<Contender>& contenders, int rounds);

/// Prints the figures as a table, each beside its ratio to the first ones, which are called `first` there. `what` heads
/// the names.
void printComparison(const std::string& what, const std::string& first, const std::vector<Figures>& figures);

}  // namespace vantrel::bench
