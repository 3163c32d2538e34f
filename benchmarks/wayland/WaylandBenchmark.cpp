// From the key press to the moved pointer in private Wayland sessions, on each compositor that is installed: the agent
// and a program of the same means, in turn; and what the agent costs at rest. Arguments: how many presses a round (200
// unless told), how many rounds (5), how many seconds at rest (60), the name of one compositor.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <random>
#include <string_view>
#include <thread>

#include "benchmarks/support/Comparison.hpp"
#include "benchmarks/support/Markdown.hpp"
#include "benchmarks/wayland/JumpDesk.hpp"
#include "benchmarks/weight/ProcessMemory.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::bench {
namespace {

using desk::centreOfSecond;
using desk::onMain;

PressTimes timePresses(JumpDesk& desk, int presses) {
    constexpr int uncounted = 20;
    PressTimes times;
    std::minstd_rand random(1);
    std::uniform_int_distribution<int> picture(0, 16667);  // at 60 a second
    desk.moveTo(onMain);
    for (int number = -uncounted; number < presses; ++number) {
        const desk::LayoutPoint target = number % 2 == 0 ? centreOfSecond : onMain;
        const auto time = desk.press(target);
        if (!time) {
            desk.moveTo(target);
        }
        if (number >= 0) {
            time ? times.times.push_back(*time) : static_cast<void>(++times.lost);
        }
        // All that the jump leaves to be painted is painted by then, as it is when a hand presses. And a hand keeps no
        // time with the displays: at one pace the presses of one program all fall while the compositor paints, and
        // those of another between its pictures.
        std::this_thread::sleep_for(std::chrono::microseconds(60000 + picture(random)));
    }
    return times;
}

std::string restOf(pid_t agent, std::chrono::seconds time) {
    // The store puts itself in order some seconds after the last change.
    desk::waitUntilAtRest(agent, std::chrono::seconds(15));
    const std::int64_t before = desk::voluntarySwitches(agent);
    std::this_thread::sleep_for(time);
    const ProcessMemory memory = memoryOf(agent);
    return "at rest: woken " + std::to_string(desk::voluntarySwitches(agent) - before) + " times in " +
           std::to_string(time.count()) + " s, private dirty " + numberText(memory.privateDirty, 2) +
           " MB, proportional " + numberText(memory.proportional, 2) + " MB";
}

void measure(const JumpDesktop& desktop, int presses, int rounds, std::chrono::seconds restingTime) {
    std::string rest;
    const auto carry = [&](Carrier carrier) {
        const auto desk = desktop.start(carrier);
        PressTimes times = timePresses(*desk, presses);
        std::fprintf(stderr, "  %s p50 %.0f p99 %.0f us, lost %d\n", carrier == Carrier::floor ? "floor" : "Vantrel",
                     times.percentile(0.5), times.percentile(0.99), times.lost);
        if (carrier == Carrier::vantrel && rest.empty()) {
            rest = restOf(desk->carrier(), restingTime);
        }
        return times;
    };
    printComparison("on " + desktop.name, "the floor",
                    compare({{.name = "the floor", .measure = [&] { return carry(Carrier::floor); }},
                             {.name = "Vantrel", .measure = [&] { return carry(Carrier::vantrel); }}},
                            rounds));
    std::printf("\n%s, %s\n\n", desktop.name.c_str(), rest.c_str());
    std::fflush(stdout);
}

int run(int count, char** arguments) {
    const auto number = [&](int index, int usual) { return count > index ? std::atoi(arguments[index]) : usual; };
    std::vector<JumpDesktop> desktops = seatDesktops();
#ifdef VANTREL_GNOME_SHELL
    desktops.push_back(gnomeDesktop());
#endif
    int status = EXIT_SUCCESS;
    for (const JumpDesktop& desktop : desktops) {
        if (count > 4 && desktop.name != std::string_view(arguments[4])) {
            continue;
        }
        try {
            measure(desktop, number(1, 200), number(2, 5), std::chrono::seconds(number(3, 60)));
        } catch (const std::exception& error) {
            // The others are measured all the same.
            std::fprintf(stderr, "%s: %s\n", desktop.name.c_str(), error.what());
            status = EXIT_FAILURE;
        }
    }
    return status;
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    return vantrel::bench::run(count, arguments);
}
