// From the key going down to the pointer seen on the other display: Vantrel against the floor and against a hot-key
// daemon with a script. All run on one private desk in turn, round by round; the figures of a candidate are the medians
// over its rounds, and the ratios compare those.
//
//     vantrel-bench-jump [PRESSES [ROUNDS [PAUSE]]]
//
// PAUSE is the time between two presses, in microseconds. A hand takes at least 150000: then the processors have gone
// to sleep before each press.
//
// VANTREL_BENCH_AGAINST=PROGRAM[:PROGRAM...] puts other builds' vantrel in the place of the daemon, to compare a change
// with what was before it. A difference below a tenth is easier to see on one processor: taskset -c 1
// vantrel-bench-jump.
#include <chrono>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "benchmarks/support/Arguments.hpp"
#include "benchmarks/support/Candidates.hpp"
#include "benchmarks/support/Comparison.hpp"

namespace vantrel::bench {
namespace {

std::vector<Candidate> candidates() {
    std::vector<Candidate> result{floorCandidate(), vantrelCandidate()};
    const char* others = std::getenv("VANTREL_BENCH_AGAINST");
    if (others == nullptr) {
        result.push_back(daemonCandidate());
        return result;
    }
    std::istringstream paths(others);
    for (std::string path; std::getline(paths, path, ':');) {
        result.push_back(otherBuildCandidate(path));
    }
    return result;
}

void run(int presses, int rounds, std::chrono::microseconds pause) {
    desk::Desk desk;
    const Course course = usualCourse();
    std::vector<Contender> contenders;
    for (const Candidate& candidate : candidates()) {
        contenders.push_back({candidate.name, [&desk, course, candidate, presses, pause] {
                                  const auto program = candidate.start(desk, course);
                                  return timePresses(desk, {.stops = stopsOf(candidate, course),
                                                            .presses = presses / candidate.slowness,
                                                            .pause = pause});
                              }});
    }
    printComparison("What", "the floor", compare(contenders, rounds));
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    return vantrel::bench::runBenchmark(
        count, arguments, {{"PRESSES", 2000, 10}, {"ROUNDS", 5, 1}, {"PAUSE", 1500, 0}}, [](const auto& numbers) {
            vantrel::bench::run(numbers[0], numbers[1], std::chrono::microseconds(numbers[2]));
        });
}
