// From the key going down to the pointer seen on the other display: Vantrel against the floor and against a hot-key
// daemon with a script. All run on one private desk in turn, round by round, so that what slows the machine slows them
// all; the figures of a candidate are the medians over its rounds, and the ratios compare those.
//
//     vantrel-bench-jump [PRESSES [ROUNDS]]
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <vector>

#include "benchmarks/jump/Candidates.hpp"
#include "benchmarks/jump/PressTiming.hpp"

namespace vantrel::bench {
namespace {

struct Figures {
    std::vector<double> medians;  ///< microseconds, one a round
    std::vector<double> tails;    ///< the 99th percentiles
    int presses = 0;
    int lost = 0;
};

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void run(int presses, int rounds) {
    desk::Desk desk;
    const std::vector<Candidate> all = candidates(presses);
    std::vector<Figures> figures(all.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t index = 0; index < all.size(); ++index) {
            const auto program = all[index].start(desk);
            const PressTimes times = timePresses(desk, firstPoint, secondPoint, all[index].presses);
            Figures& its = figures[index];
            its.medians.push_back(times.percentile(0.5).count());
            its.tails.push_back(times.percentile(0.99).count());
            its.presses += all[index].presses;
            its.lost += times.lost;
        }
    }
    std::printf("%-24s %10s %10s %10s %10s %14s\n", "", "p50 us", "p99 us", "p50 ratio", "p99 ratio", "lost");
    const double floorMedian = median(figures[0].medians);
    const double floorTail = median(figures[0].tails);
    for (std::size_t index = 0; index < all.size(); ++index) {
        const Figures& its = figures[index];
        std::printf("%-24s %10.0f %10.0f %10.2f %10.2f %6d of %5d\n", all[index].name.c_str(), median(its.medians),
                    median(its.tails), median(its.medians) / floorMedian, median(its.tails) / floorTail, its.lost,
                    its.presses);
    }
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    const int presses = count > 1 ? std::atoi(arguments[1]) : 500;
    const int rounds = count > 2 ? std::atoi(arguments[2]) : 5;
    if (presses < 10 || rounds < 1) {
        std::fprintf(stderr, "usage: %s [PRESSES [ROUNDS]]\n", arguments[0]);
        return 2;
    }
    try {
        vantrel::bench::run(presses, rounds);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
