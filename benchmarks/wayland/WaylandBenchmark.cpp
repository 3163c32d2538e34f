// From the key press to the moved pointer in a private session of sway and, where it is installed, of KWin: the agent
// and the floor, in turns; and what the agent costs at rest. Arguments: how many presses each (1000 unless told), how
// many seconds at rest (60), the name of one compositor.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "benchmarks/weight/ProcessMemory.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#ifdef VANTREL_KWIN
#include "tests/desk/wayland/support/KwinDesk.hpp"
#endif
#include "tests/desk/wayland/support/SwayDesk.hpp"

namespace {

using namespace vantrel::desk;
using Clock = std::chrono::steady_clock;

struct Times {
    std::vector<double> microseconds;
    int lost = 0;

    [[nodiscard]] double percentile(double share) {
        std::sort(microseconds.begin(), microseconds.end());
        return microseconds.empty()
                   ? 0
                   : microseconds[static_cast<std::size_t>(share * static_cast<double>(microseconds.size() - 1))];
    }
};

/// Presses the chord's last key, with the modifiers held before it, and adds the time until the pointer is seen there.
void press(WaylandDesk& desk, LayoutPoint target, Times& times) {
    Chord modifiers = hyper(keys::d);
    modifiers.pop_back();
    desk.person().hold(modifiers);
    desk.person().synchronise();
    // The last jump is over for the compositor as well.
    desk.person().look(std::chrono::milliseconds(3));
    desk.person().synchronise();
    const Clock::time_point begin = Clock::now();
    const Clock::time_point end = begin + std::chrono::seconds(1);
    desk.person().hold({keys::d});
    while (desk.person().pointer() != target && Clock::now() < end) {
    }
    const std::chrono::duration<double, std::micro> time = Clock::now() - begin;
    desk.person().letGo();
    desk.person().synchronise();
    if (desk.person().pointer() == target) {
        times.microseconds.push_back(time.count());
    } else {
        ++times.lost;
        desk.person().moveTo(target);
    }
}

Times measure(WaylandDesk& desk, int presses) {
    constexpr int uncounted = 20;
    Times times;
    Times cold;
    std::minstd_rand random(1);
    std::uniform_int_distribution<int> picture(0, 16667);  // at 60 a second
    desk.person().moveTo(onMain);
    for (int number = 0; number < presses + uncounted; ++number) {
        press(desk, number % 2 == 0 ? centreOfSecond : onMain, number < uncounted ? cold : times);
        // The jump leaves something to be painted. And a hand keeps no time with the displays: at one pace the presses
        // of one program all fall while the compositor paints, and those of another between its pictures.
        std::this_thread::sleep_for(std::chrono::microseconds(20000 + picture(random)));
    }
    return times;
}

void report(const char* name, Times times) {
    std::printf("%-8s presses %zu lost %d  p50 %.0f  p95 %.0f  p99 %.0f  max %.0f us\n", name,
                times.microseconds.size() + static_cast<std::size_t>(times.lost), times.lost, times.percentile(0.5),
                times.percentile(0.95), times.percentile(0.99), times.percentile(1));
    std::fflush(stdout);
}

void reportRest(pid_t agent, std::chrono::seconds time) {
    // The store puts itself in order some seconds after the last change.
    waitUntilAtRest(agent, std::chrono::seconds(15));
    const std::int64_t before = voluntarySwitches(agent);
    std::this_thread::sleep_for(time);
    const auto memory = vantrel::bench::memoryOf(agent);
    std::printf("at rest  woken %lld times in %lld s  private dirty %.2f MB  proportional %.2f MB\n",
                static_cast<long long>(voluntarySwitches(agent) - before), static_cast<long long>(time.count()),
                memory.privateDirty, memory.proportional);
    std::fflush(stdout);
}

/// A kind of session, and the floor there.
struct Session {
    const char* name;
    std::function<std::unique_ptr<WaylandDesk>()> start;
    std::vector<std::string> floor;
};

std::vector<Session> sessions() {
    std::vector<Session> found{{.name = "sway",
                                .start = [] { return std::make_unique<SwayDesk>(); },
                                .floor = {VANTREL_BENCH_SWAY_FLOOR, "-400", "0", "-200", "250"}}};
#ifdef VANTREL_KWIN
    found.push_back({.name = "KWin",
                     .start =
                         [] {
                             auto desk = std::make_unique<KwinDesk>();
                             desk->kwin().allow(VANTREL_BENCH_KWIN_FLOOR);
                             return desk;
                         },
                     .floor = {VANTREL_BENCH_KWIN_FLOOR}});
#endif
    return found;
}

void measureVantrel(const Session& session, int presses, std::chrono::seconds restingTime) {
    const auto desk = session.start();
    const auto agent = desk->startAgent();
    report("Vantrel", measure(*desk, presses));
    reportRest(agent->processId(), restingTime);
}

void measureFloor(const Session& session, int presses) {
    const auto desk = session.start();
    ChildProcessOptions floor;
    floor.arguments = session.floor;
    floor.environment = desk->environment();
    auto process = std::make_unique<ChildProcess>(floor);
    waitUntil([&] {
        // A compositor may learn a while later that it may do more than most.
        if (!process->isRunning()) {
            process = std::make_unique<ChildProcess>(floor);
        }
        desk->person().moveTo(onMain);
        desk->person().type(hyper(keys::d));
        return desk->person().waitFor(centreOfSecond, std::chrono::milliseconds(200));
    });
    report("floor", measure(*desk, presses));
}

}  // namespace

int main(int count, char** arguments) {
    const int presses = count > 1 ? std::atoi(arguments[1]) : 1000;
    const std::chrono::seconds restingTime(count > 2 ? std::atoi(arguments[2]) : 60);
    constexpr int turns = 2;
    for (const Session& session : sessions()) {
        if (count > 3 && session.name != std::string_view(arguments[3])) {
            continue;
        }
        std::printf("%s\n", session.name);
        for (int turn = 0; turn < turns; ++turn) {
            measureVantrel(session, presses / turns, restingTime);
            measureFloor(session, presses / turns);
        }
    }
    return 0;
}
