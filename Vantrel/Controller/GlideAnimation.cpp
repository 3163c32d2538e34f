#include "Vantrel/Controller/AppDelegate.hpp"

#include <cmath>

namespace vantrel {

namespace {

constexpr std::int64_t glideSteps = 18;
constexpr Seconds glideInterval{0.16 / 18};

/// Where the glide is after its present step: fast at first, slow at the end (an ease-out cubic).
CGPoint place(const CursorAnimation& animation) {
    if (animation.step >= animation.steps) {
        // Not by the curve: start + (target - start) may miss the target by a hair, and half a hair below a whole
        // number is a pixel off once the display server rounds down.
        return animation.target.cgPoint();
    }
    const double progress = static_cast<double>(animation.step) / static_cast<double>(animation.steps);
    const double eased = 1 - std::pow(1 - progress, 3.0);
    return CGPoint{animation.start.x + (animation.target.x - animation.start.x) * eased,
                   animation.start.y + (animation.target.y - animation.start.y) * eased};
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
    cursorAnimation->step += 1;
    platform_.pointerWarper.CGWarpMouseCursorPosition(place(*cursorAnimation));
    platform_.pointerWarper.CGAssociateMouseAndMouseCursorPosition(true);
    if (cursorAnimation->step < cursorAnimation->steps) {
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
