// What giving back the pages that only the start has needed gives and costs: two agents on two desks with a panel,
// started together, one of which keeps them; what each weighs then, and what the first jump after it takes.
//
//     vantrel-bench-memory [ROUNDS]
#include <array>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
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

struct Variant {
    std::string name;
    desk::Desk desk{};
    desk::TestPanel panel{desk.bus().address()};
    std::unique_ptr<desk::AgentProcess> agent{};
    std::vector<double> resident{};
    std::vector<double> proportional{};
    std::vector<double> unique{};
    std::vector<double> residentAfter{};
    std::vector<double> firstJump{};
    std::vector<double> laterJumps{};
    std::vector<double> faults{};
    std::vector<double> diskFaults{};
};

PressTimes jump(Variant& variant, int presses) {
    return timePresses(variant.desk, {.stops = usualCourse().stops, .presses = presses, .uncountedPresses = 0});
}

void measure(Variant& variant) {
    const pid_t process = variant.agent->processId();
    const ProcessMemory memory = memoryOf(process);
    variant.resident.push_back(memory.resident);
    variant.proportional.push_back(memory.proportional);
    variant.unique.push_back(memory.unique);
    const ProcessCounts before = countsOf(process);
    variant.firstJump.push_back(jump(variant, 1).percentile(0.5));
    const ProcessCounts after = countsOf(process);
    variant.faults.push_back(static_cast<double>(after.minorFaults - before.minorFaults));
    variant.diskFaults.push_back(static_cast<double>(after.majorFaults - before.majorFaults));
    // From where the first jump has taken it, back and forth.
    jump(variant, 1);
    variant.laterJumps.push_back(jump(variant, 20).percentile(0.5));
    variant.residentAfter.push_back(memoryOf(process).resident);
}

void run(int rounds) {
    std::array<Variant, 2> variants{Variant{"pages given back"}, Variant{"pages kept"}};
    for (Variant& variant : variants) {
        variant.desk.environment().set("LD_PRELOAD", VANTREL_BENCH_KEPT_PAGES);
    }
    variants[1].desk.environment().set("VANTREL_BENCH_KEEP_PAGES", "1");
    for (int round = 0; round < rounds; ++round) {
        for (Variant& variant : variants) {
            variant.desk.defaults().writeData("rememberedPositions", "{}");
            variant.agent = variant.desk.startAgent();
            variant.desk.pointer().moveTo(usualCourse().stops.front());
        }
        desk::waitOnBus([] { return false; }, settlingTime);
        for (std::size_t turn = 0; turn < variants.size(); ++turn) {
            measure(variants[(turn + static_cast<std::size_t>(round)) % variants.size()]);
        }
        for (Variant& variant : variants) {
            variant.agent.reset();
        }
    }
    printTableHead({"Beside a panel", "resident", "proportional", "unique", "first jump", "slowest first jump",
                    "its page faults", "from the disk", "later jumps", "resident then"});
    for (const Variant& variant : variants) {
        printTableRow({variant.name, numberText(median(variant.resident), 2) + " MB",
                       numberText(median(variant.proportional), 2) + " MB",
                       numberText(median(variant.unique), 2) + " MB", timeText(median(variant.firstJump)),
                       timeText(percentile(variant.firstJump, 1)), numberText(median(variant.faults), 0),
                       numberText(median(variant.diskFaults), 0), timeText(median(variant.laterJumps)),
                       numberText(median(variant.residentAfter), 2) + " MB"});
    }
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    return vantrel::bench::runBenchmark(count, arguments, {{"ROUNDS", 15, 1}},
                                        [](const auto& numbers) { vantrel::bench::run(numbers[0]); });
}
