// From the start of the process to its first hot key, as the X server sees it: Vantrel against a bare GApplication that
// takes the same keys, in turn.
//
//     vantrel-bench-start [STARTS]
#include <chrono>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "benchmarks/start/GrabWatch.hpp"
#include "benchmarks/support/Arguments.hpp"
#include "benchmarks/support/Markdown.hpp"
#include "benchmarks/support/Statistics.hpp"
#include "tests/desk/support/ChildProcess.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/KeyGrab.hpp"

namespace vantrel::bench {
namespace {

struct Program {
    std::string name;
    std::vector<std::string> arguments;
    std::vector<double> times{};  ///< microseconds
};

/// The keycodes and masks of the agent's hot keys, in its order.
std::vector<std::string> hotKeyNumbers(desk::Desk& desk) {
    using namespace desk;
    std::vector<std::string> numbers;
    for (const Chord& chord : {hyper(keys::d), controlOptionCommand(keys::rightArrow),
                               controlOptionCommand(keys::leftArrow), controlOptionCommand(keys::m), hyper(keys::s)}) {
        numbers.push_back(std::to_string(desk.keyboard().keycode(chord.back())));
        numbers.push_back(std::to_string(modifierMask(chord)));
    }
    return numbers;
}

Program bareProgram(const std::string& name, const std::string& moment, const std::vector<std::string>& numbers) {
    Program program{name, {VANTREL_BENCH_BARE, moment}};
    program.arguments.insert(program.arguments.end(), numbers.begin(), numbers.end());
    return program;
}

double timeOfStart(desk::Desk& desk, const Program& program) {
    GrabWatch watch(desk.server().displayName());
    desk::ChildProcessOptions options;
    options.arguments = program.arguments;
    options.environment = desk.environment();
    const auto begin = std::chrono::steady_clock::now();
    desk::ChildProcess process(options);
    const auto grabbed = watch.waitForGrab();
    if (!grabbed) {
        throw std::runtime_error("takes no key: " + program.name);
    }
    // It is to end in the ordinary way, which it does from its loop on.
    if (!desk.waitForHotKey(desk::hyper(desk::keys::s))) {
        throw std::runtime_error("does not take its last key: " + program.name);
    }
    return std::chrono::duration<double, std::micro>(*grabbed - begin).count();
}

void run(int starts) {
    desk::Desk desk;
    const auto numbers = hotKeyNumbers(desk);
    std::vector<Program> programs{
        bareProgram("the bare program, keys first", "first", numbers),
        bareProgram("the bare program, keys when the bus is connected", "startup", numbers),
        {"Vantrel", {VANTREL_BENCH_AGENT}},
    };
    for (int start = -1; start < starts; ++start) {
        for (Program& program : programs) {
            const double time = timeOfStart(desk, program);
            // The first start of each reads files that nobody has read yet.
            if (start >= 0) {
                program.times.push_back(time);
            }
        }
    }
    printTableHead({"From the start of the process to the first hot key", "p50", "p99", "beyond the first, p50"});
    const double bare = median(programs.front().times);
    for (const Program& program : programs) {
        const double usual = median(program.times);
        printTableRow({program.name, numberText(usual / 1000, 1) + " ms",
                       numberText(percentile(program.times, 0.99) / 1000, 1) + " ms",
                       numberText((usual - bare) / 1000, 1) + " ms"});
    }
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    return vantrel::bench::runBenchmark(count, arguments, {{"STARTS", 100, 3}},
                                        [](const auto& numbers) { vantrel::bench::run(numbers[0]); });
}
