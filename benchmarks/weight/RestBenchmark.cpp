// The agent at rest beside a StatusNotifier panel, before and after a great many jumps: what it weighs, whether
// anything wakes it, and whether it writes.
//
//     vantrel-bench-rest [JUMPS [SECONDS]]
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "benchmarks/support/Arguments.hpp"
#include "benchmarks/support/Course.hpp"
#include "benchmarks/support/Markdown.hpp"
#include "benchmarks/support/PressTiming.hpp"
#include "benchmarks/weight/ProcessMemory.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"

namespace vantrel::bench {
namespace {

using std::chrono::seconds;

// The start, the memory that it gives back, the store's move to the disk, and threads that GLib keeps for fifteen
// seconds.
constexpr seconds settlingTime(25);
// As many as bring everything into memory that jumps ever need: also a log that is moved among them.
constexpr int firstJumps = 2000;

class Rest {
  public:
    explicit Rest(seconds restingTime) : restingTime_(restingTime), panel_(desk_.bus().address()) {
        agent_ = desk_.startAgent();
        settle();
    }

    /// Prints a row of the table.
    void weigh(const std::string& title) {
        const pid_t process = agent_->processId();
        const ProcessMemory memory = memoryOf(process);
        if (resident_ == 0) {
            resident_ = memory.resident;
        }
        const auto switches = desk::voluntarySwitches(process);
        const auto written = countsOf(process).writtenBytes;
        std::this_thread::sleep_for(restingTime_);
        printTableRow({title, numberText(memory.resident, 2) + " MB",
                       numberText((memory.resident / resident_ - 1) * 100, 1) + " %",
                       numberText(memory.privateDirty, 2) + " MB", numberText(memory.unique, 2) + " MB",
                       std::to_string(desk::voluntarySwitches(process) - switches),
                       std::to_string(countsOf(process).writtenBytes - written)});
    }

    /// Jumps as fast as the pointer arrives, there and back, and lets the agent settle.
    void jump(int presses) {
        const PressTimes times = timePresses(desk_, {.stops = stops_,
                                                     .presses = presses / 2 * 2,
                                                     .pause = std::chrono::microseconds(0),
                                                     .uncountedPresses = 0});
        lost_ += times.lost;
        stops_ = times.stops;
        settle();
    }

    [[nodiscard]] int lost() const { return lost_; }

  private:
    void settle() {
        desk::waitOnBus([] { return false; }, settlingTime);
    }

    seconds restingTime_;
    desk::Desk desk_;
    desk::TestPanel panel_;
    std::unique_ptr<desk::AgentProcess> agent_;
    std::vector<desk::MainPoint> stops_ = usualCourse().stops;
    double resident_ = 0;
    int lost_ = 0;
};

void run(int jumps, int restingSeconds) {
    Rest rest{seconds(restingSeconds)};
    printTableHead({"Beside a panel", "resident", "against the first", "private dirty", "unique",
                    "context switches in " + std::to_string(restingSeconds) + " s", "bytes written in that time"});
    rest.weigh("at rest, never used");
    rest.jump(firstJumps);
    rest.weigh("after " + groupedText(firstJumps) + " jumps");
    rest.jump(jumps);
    rest.weigh("after " + groupedText(jumps) + " more (" + std::to_string(rest.lost()) + " lost)");
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    return vantrel::bench::runBenchmark(count, arguments, {{"JUMPS", 100'000, 2}, {"SECONDS", 60, 1}},
                                        [](const auto& numbers) { vantrel::bench::run(numbers[0], numbers[1]); });
}
