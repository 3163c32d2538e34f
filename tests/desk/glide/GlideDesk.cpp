#include "tests/desk/glide/GlideDesk.hpp"

#include <algorithm>
#include <stdexcept>

#include "tests/desk/support/ProcessActivity.hpp"

namespace vantrel::desk {

GlideDesk::GlideDesk(const GlideLayout& layout) : layout_(layout) {
    desk_.defaults().writeText("animation", "glide");
    plugSecond();
    agent_ = desk_.startAgent();
    trace_ = std::make_unique<PointerTrace>(desk_.server().displayName(), desk_.layout());
    putBack();
}

void GlideDesk::putBack() {
    desk_.pointer().moveTo(start);
    trace_->forget();
}

void GlideDesk::plugSecond() {
    desk_.layout().apply({{.output = 0, .bounds = mainBounds}, {.output = 1, .bounds = layout_.second}});
}

void GlideDesk::unplugSecond() {
    desk_.layout().apply({{.output = 0, .bounds = mainBounds}});
}

void GlideDesk::stopInMidGlide() {
    constexpr int attempts = 20;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        jump();
        if (!trace_->waitForMove()) {
            throw std::runtime_error("the pointer does not glide");
        }
        agent_->sendSignal(SIGSTOP);
        if (!waitUntil([&] { return isStopped(agent_->processId()); })) {
            throw std::runtime_error("the agent does not stop");
        }
        if (trace_->moves().size() < glideTicks) {
            return;
        }
        goOn();
        // A way back, so that the next attempt goes to the second display's centre again.
        trace_->forget();
        jump();
        if (!trace_->waitForMoves(glideTicks)) {
            throw std::runtime_error("the pointer does not glide back");
        }
        putBack();
    }
    throw std::runtime_error("no glide could be stopped on its way");
}

int GlideDesk::ticksPassed() {
    const auto path = trace_->path();
    const auto points = curve();
    const bool isOnCurve = path.size() <= points.size() && std::equal(path.begin(), path.end(), points.begin());
    return isOnCurve ? static_cast<int>(path.size()) : -1;
}

}  // namespace vantrel::desk
