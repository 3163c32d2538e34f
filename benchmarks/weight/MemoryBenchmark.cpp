// What giving back the pages that only the start or a use has needed gives and costs: two agents on two desks with a
// panel, started together, one of which keeps them; what each weighs then, and what the first jump after it takes, once
// after the start and once after jumps and a rest.
//
//     vantrel-bench-memory [ROUNDS]
#include <array>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "benchmarks/support/Arguments.hpp"
#include "benchmarks/support/Course.hpp"
#include "benchmarks/support/Markdown.hpp"
#include "benchmarks/support/PressTiming.hpp"
#include "benchmarks/support/Statistics.hpp"
#include "benchmarks/weight/ProcessMemory.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::bench {
namespace {

// Pages are given back five seconds after the start.
constexpr std::chrono::seconds settlingTime(8);

// And again when the store has come to rest, ten seconds after a jump.
constexpr std::chrono::seconds restingTime(13);

struct Variant {
    std::string name;
    desk::Desk desk{};
    desk::TestPanel panel{desk.bus().address()};
    std::unique_ptr<desk::AgentProcess> agent{};
    std::vector<desk::MainPoint> stops{};
};

/// What was seen in each round of one variant after one kind of quiet.
struct Series {
    std::string name;
    std::vector<double> resident{};
    std::vector<double> proportional{};
    std::vector<double> unique{};
    std::vector<double> firstJump{};
    std::vector<double> laterJumps{};
    std::vector<double> faults{};
    std::vector<double> diskFaults{};
};

PressTimes jump(Variant& variant, int presses) {
    return timePresses(variant.desk, {.stops = variant.stops, .presses = presses, .uncountedPresses = 0});
}

void measure(Variant& variant, Series& series) {
    const pid_t process = variant.agent->processId();
    const ProcessMemory memory = memoryOf(process);
    series.resident.push_back(memory.resident);
    series.proportional.push_back(memory.proportional);
    series.unique.push_back(memory.unique);
    const ProcessCounts before = countsOf(process);
    series.firstJump.push_back(jump(variant, 1).percentile(0.5));
    const ProcessCounts after = countsOf(process);
    series.faults.push_back(static_cast<double>(after.minorFaults - before.minorFaults));
    series.diskFaults.push_back(static_cast<double>(after.majorFaults - before.majorFaults));
    // From where the first jump has taken it, back and forth.
    jump(variant, 1);
    PressTimes later = jump(variant, 20);
    series.laterJumps.push_back(later.percentile(0.5));
    variant.stops = std::move(later.stops);
}

void print(const Series& series) {
    printTableRow({series.name, numberText(median(series.resident), 2) + " MB",
                   numberText(median(series.proportional), 2) + " MB", numberText(median(series.unique), 2) + " MB",
                   timeText(median(series.firstJump)), timeText(percentile(series.firstJump, 1)),
                   numberText(median(series.faults), 0), numberText(median(series.diskFaults), 0),
                   timeText(median(series.laterJumps))});
}

void run(int rounds) {
    std::array<Variant, 2> variants{Variant{"pages given back"}, Variant{"pages kept"}};
    for (Variant& variant : variants) {
        variant.desk.environment().set("LD_PRELOAD", VANTREL_BENCH_KEPT_PAGES);
    }
    variants[1].desk.environment().set("VANTREL_BENCH_KEEP_PAGES", "1");
    std::array<std::array<Series, 2>, 2> all{};
    for (std::size_t index = 0; index < variants.size(); ++index) {
        all[0][index].name = "after the start, " + variants[index].name;
        all[1][index].name = "after jumps and a rest, " + variants[index].name;
    }
    for (int round = 0; round < rounds; ++round) {
        for (Variant& variant : variants) {
            variant.desk.defaults().writeData("rememberedPositions", "{}");
            variant.agent = variant.desk.startAgent();
            variant.stops = usualCourse().stops;
            variant.desk.pointer().moveTo(variant.stops.front());
        }
        desk::Duration quiet = settlingTime;
        for (auto& series : all) {
            desk::waitOnBus([] { return false; }, quiet);
            for (std::size_t turn = 0; turn < variants.size(); ++turn) {
                const std::size_t index = (turn + static_cast<std::size_t>(round)) % variants.size();
                measure(variants[index], series[index]);
            }
            quiet = restingTime;
        }
        for (Variant& variant : variants) {
            variant.agent.reset();
        }
    }
    printTableHead({"Beside a panel", "resident", "proportional", "unique", "first jump", "slowest first jump",
                    "its page faults", "from the disk", "later jumps"});
    for (const auto& ofQuiet : all) {
        for (const Series& series : ofQuiet) {
            print(series);
        }
    }
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    return vantrel::bench::runBenchmark(count, arguments, {{"ROUNDS", 15, 1}},
                                        [](const auto& numbers) { vantrel::bench::run(numbers[0]); });
}
