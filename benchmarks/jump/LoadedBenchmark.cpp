// The jump where something is in its way: another program on a processor, a disk that is written without end, many
// displays, a full store. Every condition and every candidate take turns, round by round.
//
//     vantrel-bench-loaded [PRESSES [ROUNDS]]
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "VantrelCore/JSONEncoder.hpp"
#include "benchmarks/support/Arguments.hpp"
#include "benchmarks/support/Candidates.hpp"
#include "benchmarks/support/Comparison.hpp"
#include "benchmarks/support/Markdown.hpp"
#include "tests/desk/support/ChildProcess.hpp"

namespace vantrel::bench {
namespace {

using desk::Desk;

struct Condition {
    std::string name;
    Desk* desk = nullptr;
    Course course;
    /// Makes life hard until the result goes; may be empty.
    std::function<std::shared_ptr<void>(Desk&)> load{};
};

std::shared_ptr<void> startLoad(Desk& desk, const std::vector<std::string>& arguments) {
    desk::ChildProcessOptions options;
    options.arguments = {VANTREL_BENCH_LOAD};
    options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
    options.environment = desk.environment();
    return std::make_shared<desk::ChildProcess>(options);
}

Course courseWithRememberedDisplays(std::uint32_t count) {
    RememberedPositions positions;
    for (std::uint32_t index = 1; index <= count; ++index) {
        constexpr std::uint32_t scatter = 2654435761U;
        positions[index * scatter] = VantrelPoint(100 + index % 1000, 200 + index % 700);
    }
    Course course = usualCourse();
    course.rememberedPositions = JSONEncoder().encode(positions).value();
    return course;
}

Course courseWithSavedPoints(std::size_t count) {
    std::vector<SavedPoint> points(count);
    for (std::size_t index = 0; index < count; ++index) {
        points[index].id.bytes[0] = static_cast<std::uint8_t>(index % 256);
        points[index].id.bytes[1] = static_cast<std::uint8_t>(index / 256);
        points[index].name = "Point " + std::to_string(index + 1);
        points[index].point = VantrelPoint(static_cast<double>(index % 1500), 400);
    }
    Course course = usualCourse();
    course.savedPoints = JSONEncoder().encode(points).value();
    return course;
}

std::vector<Condition> conditions(Desk& two, Desk& many, const Course& displayRow) {
    return {{.name = "nothing else", .desk = &two, .course = usualCourse()},
            {.name = "another program keeps a core busy",
             .desk = &two,
             .course = usualCourse(),
             .load = [](Desk& desk) { return startLoad(desk, {"busy"}); }},
            {.name = "the store's disk is written without end",
             .desk = &two,
             .course = usualCourse(),
             .load =
                 [](Desk& desk) {
                     return startLoad(desk, {"write", desk.home().path() / "load"});
                 }},
            {.name = std::to_string(displayRow.stops.size()) + " displays", .desk = &many, .course = displayRow},
            {.name = "1,000 remembered displays", .desk = &two, .course = courseWithRememberedDisplays(1000)},
            {.name = "10,000 saved points", .desk = &two, .course = courseWithSavedPoints(10'000)}};
}

void run(int presses, int rounds) {
    Desk two;
    Desk many;
    const Course displayRow = layOutDisplayRow(many);
    const std::vector<Candidate> candidates{floorCandidate(), vantrelCandidate(), daemonCandidate()};
    const std::vector<Condition> all = conditions(two, many, displayRow);
    std::vector<Contender> contenders;
    for (const Condition& condition : all) {
        for (const Candidate& candidate : candidates) {
            contenders.push_back({condition.name, [&condition, &candidate, presses] {
                                      Desk& desk = *condition.desk;
                                      const auto program = candidate.start(desk, condition.course);
                                      const auto load = condition.load ? condition.load(desk) : nullptr;
                                      return timePresses(desk, {.stops = stopsOf(candidate, condition.course),
                                                                .presses = presses / candidate.slowness});
                                  }});
        }
    }
    const std::vector<Figures> figures = compare(contenders, rounds);
    printTableHead({"While", "floor p50", "p99", "Vantrel p50", "p99", "against the floor, p50", "p99",
                    "against the quiet Vantrel, p50", "lost", "sxhkd p50", "Vantrel is faster"});
    const double quiet = figures[1].p50();
    for (std::size_t index = 0; index < figures.size(); index += candidates.size()) {
        const Figures& floor = figures[index];
        const Figures& vantrel = figures[index + 1];
        const Figures& daemon = figures[index + 2];
        printTableRow({floor.name, timeText(floor.p50()), timeText(floor.p99()), timeText(vantrel.p50()),
                       timeText(vantrel.p99()), numberText(vantrel.p50() / floor.p50(), 2),
                       numberText(vantrel.p99() / floor.p99(), 2), numberText(vantrel.p50() / quiet, 2),
                       vantrel.lostText(), timeText(daemon.p50()),
                       numberText(daemon.p50() / vantrel.p50(), 0) + " times"});
    }
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    return vantrel::bench::runBenchmark(count, arguments, {{"PRESSES", 300, 10}, {"ROUNDS", 3, 1}},
                                        [](const auto& numbers) { vantrel::bench::run(numbers[0], numbers[1]); });
}
