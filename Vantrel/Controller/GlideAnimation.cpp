#include "Vantrel/Controller/AppDelegate.hpp"

#include <algorithm>
#include <cmath>

namespace vantrel {

namespace {

constexpr std::int64_t glideSteps = 18;
constexpr Seconds glideInterval{0.16 / 18};

/// Fast at first, slow at the end: an ease-out cubic over a progress of 0 to 1.
double eased(double progress) {
    return 1 - std::pow(1 - progress, 3.0);
}

}  // namespace

void AppDelegate::glidePointer(const VantrelPoint& target) {
    const auto start = readPointer();
    if (!start) {
        movePointerAtOnce(target);
        return;
    }
    if (animationTimer) {
        animationTimer->invalidate();
    }
    cursorAnimation = CursorAnimation{*start, target, glideSteps, 0};
    // The timer ends with the controller, which alone holds it.
    animationTimer =
        platform_.runLoop.scheduledTimer(glideInterval, true, [this](Timer& timer) { animationTick(timer); });
}

void AppDelegate::animationTick(Timer& timer) {
    assertMainThread("animationTick");
    if (!cursorAnimation) {
        timer.invalidate();
        animationTimer = nullptr;
        return;
    }
    CursorAnimation& animation = *cursorAnimation;
    animation.step += 1;
    const double progress = std::min(static_cast<double>(animation.step) / static_cast<double>(animation.steps), 1.0);
    const double fraction = eased(progress);
    platform_.pointerWarper.CGWarpMouseCursorPosition(
        CGPoint{animation.start.x + (animation.target.x - animation.start.x) * fraction,
                animation.start.y + (animation.target.y - animation.start.y) * fraction});
    platform_.pointerWarper.CGAssociateMouseAndMouseCursorPosition(true);
    if (animation.step < animation.steps) {
        return;
    }
    timer.invalidate();
    animationTimer = nullptr;
    cursorAnimation = std::nullopt;
    if (soundEnabled) {
        playFeedbackSound();
    }
}

}  // namespace vantrel
