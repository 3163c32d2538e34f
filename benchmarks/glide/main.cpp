// Measures glides of the real agent on a private desk: how late its ticks are and what they cost.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <string_view>
#include <vector>

#include "benchmarks/glide/GlideRecorder.hpp"

namespace vantrel::desk {
namespace {

constexpr int glides = 200;

Milliseconds percentile(std::vector<Milliseconds> times, double share) {
    std::sort(times.begin(), times.end());
    const auto index = static_cast<std::size_t>(std::ceil(share * static_cast<double>(times.size()))) - 1;
    return times.at(index);
}

void print(const char* title, const std::vector<Milliseconds>& times) {
    std::printf("%-28s p50 %8.3f ms   p99 %8.3f ms   max %8.3f ms\n", title, percentile(times, 0.5).count(),
                percentile(times, 0.99).count(), percentile(times, 1).count());
}

/// The agent's processor time for a jump, in microseconds.
template <typename Jump>
double timeOfJump(const GlideRecorder& recorder, const Jump& jump) {
    const auto before = recorder.agentTime();
    for (int count = 0; count < glides; ++count) {
        jump();
    }
    return std::chrono::duration<double, std::micro>(recorder.agentTime() - before).count() / glides;
}

/// Returns whether every glide took its eighteen ticks along the curve.
bool measure() {
    std::vector<Milliseconds> lateness;
    std::vector<Milliseconds> durations;
    bool isRight = true;
    GlideRecorder gliding("glide");
    const double glideTime = timeOfJump(gliding, [&] {
        const auto glide = gliding.recordGlide();
        isRight = isRight && glide.isComplete();
        lateness.insert(lateness.end(), glide.lateness.begin(), glide.lateness.end());
        durations.push_back(glide.tickTimes.back() - glide.tickTimes.front());
    });
    GlideRecorder instant("none");
    const double jumpTime = timeOfJump(instant, [&] { instant.jumpAtOnce(); });

    std::printf("%d glides of %d ticks, %s\n", glides, glideTicks,
                isRight ? "all on the curve" : "NOT ALL ON THE CURVE");
    print("a tick's lateness", lateness);
    print("first tick to last (151.111)", durations);
    std::printf("the agent's processor time   %.0f us a glide, %.0f us a jump at once: %.1f us a tick\n", glideTime,
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
    const bool wantsPath = argumentCount == 2 && std::string_view(arguments[1]) == "--path";
    if (argumentCount != 1 && !wantsPath) {
        std::fprintf(stderr, "usage: %s [--path]\n", arguments[0]);
        return 2;
    }
    try {
        if (wantsPath) {
            vantrel::desk::printPath();
            return 0;
        }
        return vantrel::desk::measure() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
