// Measures glides of the real agent on a private desk: how late its ticks are and what they cost. With --path it prints
// the way of one glide.
//
//     vantrel-bench-glide [GLIDES | --path]
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/glide/GlideRecorder.hpp"
#include "benchmarks/support/Arguments.hpp"
#include "benchmarks/support/Markdown.hpp"
#include "benchmarks/support/Statistics.hpp"

namespace vantrel::desk {
namespace {

constexpr int usualGlides = 200;

std::string text(const std::vector<double>& milliseconds, double share) {
    return bench::numberText(bench::percentile(milliseconds, share), 2) + " ms";
}

void print(const char* title, const std::vector<Milliseconds>& times) {
    std::vector<double> numbers;
    for (const Milliseconds time : times) {
        numbers.push_back(time.count());
    }
    bench::printTableRow({title, text(numbers, 0.5), text(numbers, 0.99), text(numbers, 1)});
}

/// The agent's processor time for a jump, in microseconds.
template <typename Jump>
double timeOfJump(const GlideRecorder& recorder, int glides, const Jump& jump) {
    const auto before = recorder.agentTime();
    for (int count = 0; count < glides; ++count) {
        jump();
    }
    return std::chrono::duration<double, std::micro>(recorder.agentTime() - before).count() / glides;
}

/// Returns whether every glide took its eighteen ticks along the curve.
bool measure(int glides) {
    std::vector<Milliseconds> lateness;
    std::vector<Milliseconds> durations;
    bool isRight = true;
    GlideRecorder gliding("glide");
    const double glideTime = timeOfJump(gliding, glides, [&] {
        const auto glide = gliding.recordGlide();
        isRight = isRight && glide.isComplete();
        lateness.insert(lateness.end(), glide.lateness.begin(), glide.lateness.end());
        durations.push_back(glide.tickTimes.back() - glide.tickTimes.front());
    });
    GlideRecorder instant("none");
    const double jumpTime = timeOfJump(instant, glides, [&] { instant.jumpAtOnce(); });

    std::printf("%d glides of %d ticks, %s\n\n", glides, glideTicks,
                isRight ? "all on the curve" : "NOT ALL ON THE CURVE");
    bench::printTableHead({"What", "p50", "p99", "max"});
    print("a tick's lateness, as a watching client of the server sees it", lateness);
    print("first tick to last (151.111 ms on the schedule)", durations);
    std::printf("\nThe agent's processor time: %.0f us a glide, %.0f us a jump at once, %.1f us a tick\n", glideTime,
                jumpTime, (glideTime - jumpTime) / glideTicks);
    return isRight;
}

/// One glide as a table: time in ms, x, y. The first line is the departure.
void printPath() {
    GlideRecorder recorder("glide");
    // The first glide pays for the agent's first use of everything.
    recorder.recordGlide();
    const auto glide = recorder.recordGlide();
    std::printf("0 %d %d\n", glide.from.x, glide.from.y);
    for (std::size_t tick = 0; tick < glide.points.size(); ++tick) {
        std::printf("%.3f %d %d\n", glide.tickTimes[tick].count(), glide.points[tick].x, glide.points[tick].y);
    }
}

}  // namespace
}  // namespace vantrel::desk

int main(int argumentCount, char** arguments) {
    if (argumentCount == 2 && std::string_view(arguments[1]) == "--path") {
        return vantrel::bench::runBenchmark(1, arguments, {}, [](const auto&) { vantrel::desk::printPath(); });
    }
    bool isRight = true;
    const int status =
        vantrel::bench::runBenchmark(argumentCount, arguments, {{"GLIDES", vantrel::desk::usualGlides, 1}},
                                     [&](const auto& numbers) { isRight = vantrel::desk::measure(numbers[0]); });
    return isRight ? status : EXIT_FAILURE;
}
