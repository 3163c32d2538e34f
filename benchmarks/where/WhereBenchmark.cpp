// Where the time goes between the press and the moved pointer: an agent of the real parts notes when a jump passes
// through each, and these times and the presses' own are of one clock.
//
//     vantrel-bench-where [PRESSES [0 | 1 [PAUSE]]]
//
// 1: on sixteen displays. PAUSE: between two presses, in microseconds; a hand takes 150000 at least.
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "benchmarks/support/Arguments.hpp"
#include "benchmarks/support/Candidates.hpp"
#include "benchmarks/support/Markdown.hpp"
#include "benchmarks/support/PressTiming.hpp"
#include "benchmarks/support/Statistics.hpp"
#include "benchmarks/where/JumpStamps.hpp"
#include "tests/desk/support/ChildProcess.hpp"

namespace vantrel::bench {
namespace {

/// The times from one moment to the next: the press, the agent's own moments, the pointer seen at its target.
constexpr std::size_t stepCount = momentCount + 1;
constexpr std::array<const char*, stepCount> stepNames{
    "the server takes the press and wakes the agent",
    "event: read, and matched with a hot key",
    "task: to the next turn of the loop",
    "layout: displays and pointer",
    "place: the display it is on, and its stored form",
    "store: the commit",
    "plan: the target",
    "warp: the request is sent",
    "the server moves the pointer, and the client sees it",
};

struct Recorded {
    std::vector<std::int64_t> pressed;  ///< nanoseconds
    std::vector<double> durations;      ///< microseconds, from there to the pointer seen
    std::vector<JumpStamps> jumps;
};

Recorded record(int presses, bool hasManyDisplays, std::chrono::microseconds pause) {
    desk::Desk desk;
    const Course course = hasManyDisplays ? layOutDisplayRow(desk) : usualCourse();
    const std::filesystem::path file = desk.home().path() / "stamps";
    desk::ChildProcessOptions options;
    options.arguments = {VANTREL_BENCH_STAMPING_AGENT, file};
    options.environment = desk.environment();
    desk::ChildProcess agent(options);
    if (!desk.waitForHotKey(desk::hyper(desk::keys::s))) {
        throw std::runtime_error("the agent does not become ready");
    }
    Recorded result;
    const PressSeries series{.stops = course.stops,
                             .presses = presses,
                             .pause = pause,
                             .pressed = [&](std::chrono::steady_clock::time_point begin) {
                                 result.pressed.push_back(std::chrono::nanoseconds(begin.time_since_epoch()).count());
                             }};
    const PressTimes times = timePresses(desk, series);
    if (agent.end().code != 0) {
        throw std::runtime_error("the agent does not end well");
    }
    result.durations = times.times;
    result.jumps = readStamps(file);
    const auto all = static_cast<std::size_t>(series.uncountedPresses + presses);
    if (times.lost > 0 || result.jumps.size() != all) {
        throw std::runtime_error("lost presses: " + std::to_string(times.lost) + "; the agent saw " +
                                 std::to_string(result.jumps.size()) + " of " + std::to_string(all));
    }
    result.jumps.erase(result.jumps.begin(), result.jumps.begin() + series.uncountedPresses);
    return result;
}

void run(int presses, bool hasManyDisplays, std::chrono::microseconds pause) {
    const Recorded recorded = record(presses, hasManyDisplays, pause);
    std::array<std::vector<double>, stepCount> steps;
    for (std::size_t press = 0; press < recorded.jumps.size(); ++press) {
        double before = static_cast<double>(recorded.pressed[press]);
        const double seen = before + recorded.durations[press] * 1000;
        for (std::size_t step = 0; step < stepCount; ++step) {
            const double now = step < momentCount ? static_cast<double>(recorded.jumps[press][step]) : seen;
            steps[step].push_back((now - before) / 1000);
            before = now;
        }
    }
    const double whole = median(recorded.durations);
    printTableHead({"Step", "p50", "p99", "of the whole"});
    for (std::size_t step = 0; step < stepCount; ++step) {
        const double usual = median(steps[step]);
        printTableRow({stepNames[step], timeText(usual), timeText(percentile(steps[step], 0.99)),
                       numberText(usual / whole * 100, 0) + " %"});
    }
    printTableRow({"press to moved pointer", timeText(whole), timeText(percentile(recorded.durations, 0.99)), ""});
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    return vantrel::bench::runBenchmark(
        count, arguments, {{"PRESSES", 2000, 10}, {"MANY-DISPLAYS", 0, 0}, {"PAUSE", 1500, 0}},
        [](const auto& numbers) {
            vantrel::bench::run(numbers[0], numbers[1] != 0, std::chrono::microseconds(numbers[2]));
        });
}
