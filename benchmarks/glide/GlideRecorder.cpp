#include "benchmarks/glide/GlideRecorder.hpp"

#include <algorithm>
#include <stdexcept>

#include "tests/desk/support/ProcessActivity.hpp"

namespace vantrel::desk {

namespace {

constexpr MainRect mainBounds{.x = 0, .y = 0, .width = 1512, .height = 982};
constexpr MainRect secondBounds{.x = 1512, .y = 100, .width = 1024, .height = 768};

std::unique_ptr<AgentProcess> startAgent(Desk& desk, const std::string& animation) {
    desk.layout().apply({{.output = 0, .bounds = mainBounds}, {.output = 1, .bounds = secondBounds}});
    desk.defaults().writeText("animation", animation);
    auto agent = desk.startAgent();
    desk.pointer().moveTo({.x = 700, .y = 500});
    return agent;
}

}  // namespace

bool RecordedGlide::isComplete() const {
    return points == glideCurve(from, {.x = static_cast<double>(to.x), .y = static_cast<double>(to.y)});
}

GlideRecorder::GlideRecorder(const std::string& animation)
    : agent_(startAgent(desk_, animation)), trace_(desk_.server().displayName(), desk_.layout()) {}

RecordedGlide GlideRecorder::recordGlide() {
    RecordedGlide glide;
    glide.from = desk_.pointer().position();
    trace_.forget();
    desk_.keyboard().type(hyper(keys::d));
    if (!trace_.waitForMoves(glideTicks)) {
        throw std::runtime_error("the pointer does not glide");
    }
    const auto& moves = trace_.moves();
    // The kernel's timer is never early, so the schedule is the one on which the least late tick was in time.
    auto start = moves.front().seen.time_since_epoch() - tickInterval;
    for (std::size_t tick = 0; tick < moves.size(); ++tick) {
        start = std::min(start, moves[tick].seen.time_since_epoch() - static_cast<double>(tick + 1) * tickInterval);
    }
    for (std::size_t tick = 0; tick < moves.size(); ++tick) {
        const Milliseconds time = moves[tick].seen.time_since_epoch() - start;
        glide.points.push_back(moves[tick].to);
        glide.tickTimes.push_back(time);
        glide.lateness.push_back(time - static_cast<double>(tick + 1) * tickInterval);
    }
    glide.to = glide.points.back();
    return glide;
}

void GlideRecorder::jumpAtOnce() {
    trace_.forget();
    desk_.keyboard().type(hyper(keys::d));
    if (!trace_.waitForMove()) {
        throw std::runtime_error("the pointer does not jump");
    }
}

std::chrono::nanoseconds GlideRecorder::agentTime() const {
    return processorTime(agent_->processId());
}

}  // namespace vantrel::desk
