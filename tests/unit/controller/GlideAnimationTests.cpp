#include <cmath>

#include "tests/fakes/FakeTimer.hpp"
#include "tests/unit/controller/ControllerTest.hpp"
#include "tests/unit/loop/AllocationCount.hpp"

namespace vantrel {
namespace {

constexpr Seconds tick{0.16 / 18};
constexpr Seconds whole{0.16};

class GlideAnimationTest : public ControllerTest {
  protected:
    void SetUp() override {
        launch();
        fakes.pointer.location = {100, -50};
    }

    void expectPointerNear(const CGPoint& expected) {
        EXPECT_NEAR(fakes.pointer.location.x, expected.x, 1e-9);
        EXPECT_NEAR(fakes.pointer.location.y, expected.y, 1e-9);
    }

    /// Where the pointer is after that many ticks.
    static CGPoint place(const CGPoint& start, const CGPoint& target, int ticks) {
        const double eased = 1 - std::pow(1 - ticks / 18.0, 3);
        return {start.x + (target.x - start.x) * eased, start.y + (target.y - start.y) * eased};
    }
};

TEST_F(GlideAnimationTest, glide_start_readsThePointerAndStartsTheTimer) {
    controller->glidePointer({1900, 850});
    EXPECT_EQ(fakes.journal, (fake::Journal{"CGEventCreate", "scheduledTimer(0.008888888888888889, repeating)"}));
    EXPECT_EQ(fakes.mainQueue.runningTimers(), 1U);
}

TEST_F(GlideAnimationTest, glide_whole_followsTheCurveAtEachTick) {
    const CGPoint start = fakes.pointer.location;
    const CGPoint target{1900, 850};
    controller->glidePointer(VantrelPoint(target));
    for (int ticks = 1; ticks <= 18; ++ticks) {
        fakes.mainQueue.advance(tick);
        ASSERT_EQ(fakes.pointer.warps.size(), static_cast<std::size_t>(ticks));
        expectPointerNear(place(start, target, ticks));
    }
    EXPECT_EQ(fakes.pointer.location, target);
    EXPECT_EQ(calls({"CGAssociateMouseAndMouseCursorPosition"}),
              fake::Journal(18, "CGAssociateMouseAndMouseCursorPosition(true)"));
}

TEST_F(GlideAnimationTest, glide_firstTick_goesAlmostASixthOfTheWay) {
    fakes.pointer.location = {0, 0};
    controller->glidePointer({1000, 0});
    fakes.mainQueue.advance(tick);
    EXPECT_NEAR(fakes.pointer.location.x, 157.57887517146778, 1e-9);
}

TEST_F(GlideAnimationTest, glide_awkwardTargets_areMetExactly) {
    for (const VantrelPoint target : {VantrelPoint(0.1, -0.3), VantrelPoint(-1023.7, 1e6), VantrelPoint(1.0 / 3, 7)}) {
        controller->glidePointer(target);
        fakes.mainQueue.advance(whole);
        EXPECT_EQ(fakes.pointer.location, target.cgPoint());
    }
}

TEST_F(GlideAnimationTest, glide_end_stopsTheTimerAndSounds) {
    controller->glidePointer({1900, 850});
    fakes.mainQueue.advance(whole - tick);
    fakes.journal.clear();
    fakes.mainQueue.advance(Seconds(1));
    EXPECT_EQ(fakes.journal,
              (fake::Journal{"CGWarpMouseCursorPosition(1900, 850)", "CGAssociateMouseAndMouseCursorPosition(true)",
                             "invalidate", "play(Pop)"}));
    EXPECT_EQ(fakes.mainQueue.runningTimers(), 0U);
}

TEST_F(GlideAnimationTest, glide_afterAnotherHasEnded_hasNoTimerToStop) {
    controller->glidePointer({1900, 850});
    fakes.mainQueue.advance(whole);
    fakes.journal.clear();
    controller->glidePointer({100, -50});
    EXPECT_EQ(fakes.journal, (fake::Journal{"CGEventCreate", "scheduledTimer(0.008888888888888889, repeating)"}));
}

TEST_F(GlideAnimationTest, glide_soundOff_isSilent) {
    controller->preferencesDidChangeSound(false);
    controller->glidePointer({1900, 850});
    fakes.mainQueue.advance(whole);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{1900, 850}));
    EXPECT_TRUE(calls({"play"}).empty());
}

TEST_F(GlideAnimationTest, glide_toWhereThePointerIs_runsInFull) {
    controller->glidePointer({100, -50});
    fakes.mainQueue.advance(whole);
    EXPECT_EQ(fakes.pointer.warps, std::vector<CGPoint>(18, CGPoint{100, -50}));
    EXPECT_EQ(calls({"play"}).size(), 1U);
}

TEST_F(GlideAnimationTest, glide_duringAnother_startsFromWhereThatHadGotTo) {
    controller->glidePointer({1900, 850});
    fakes.mainQueue.advance(5 * tick);
    const CGPoint turningPoint = fakes.pointer.location;
    expectPointerNear(place({100, -50}, {1900, 850}, 5));
    fakes.journal.clear();
    fakes.pointer.warps.clear();
    controller->glidePointer({-400, 400});
    EXPECT_EQ(fakes.journal,
              (fake::Journal{"CGEventCreate", "invalidate", "scheduledTimer(0.008888888888888889, repeating)"}));
    EXPECT_EQ(fakes.mainQueue.runningTimers(), 1U);
    fakes.mainQueue.advance(tick);
    expectPointerNear(place(turningPoint, {-400, 400}, 1));
    fakes.mainQueue.advance(Seconds(1));
    EXPECT_EQ(fakes.pointer.warps.size(), 18U);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-400, 400}));
    EXPECT_EQ(calls({"play"}).size(), 1U);
}

TEST_F(GlideAnimationTest, glide_pointerUnreadable_movesAtOnce) {
    fakes.pointer.isReadable = false;
    controller->glidePointer({1900, 850});
    EXPECT_EQ(fakes.journal, (fake::Journal{"CGEventCreate", "CGWarpMouseCursorPosition(1900, 850)",
                                            "CGAssociateMouseAndMouseCursorPosition(true)", "play(Pop)"}));
}

TEST_F(GlideAnimationTest, glide_pointerUnreadableAndSoundOff_isSilent) {
    controller->preferencesDidChangeSound(false);
    fakes.pointer.isReadable = false;
    controller->glidePointer({1900, 850});
    EXPECT_EQ(fakes.pointer.location, (CGPoint{1900, 850}));
    EXPECT_TRUE(calls({"play"}).empty());
}

TEST_F(GlideAnimationTest, glide_pointerUnreadableDuringAnother_leavesThatRunning) {
    controller->glidePointer({1900, 850});
    fakes.pointer.isReadable = false;
    controller->glidePointer({-400, 400});
    EXPECT_EQ(fakes.mainQueue.runningTimers(), 1U);
    fakes.mainQueue.advance(whole);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{1900, 850}));
    EXPECT_EQ(calls({"play"}).size(), 2U);
}

TEST_F(GlideAnimationTest, glide_busyLoop_doesOneStepForEachFiring) {
    controller->glidePointer({1900, 850});
    fakes.mainQueue.advance(2 * tick);
    fakes.mainQueue.stall(4.5 * tick);
    fakes.mainQueue.advance(Seconds(0));
    EXPECT_EQ(fakes.pointer.warps.size(), 3U);
    expectPointerNear(place({100, -50}, {1900, 850}, 3));
    fakes.mainQueue.advance(Seconds(1));
    EXPECT_EQ(fakes.pointer.warps.size(), 18U);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{1900, 850}));
}

/// Warps nothing and only counts, so that all that asks for memory is the controller.
class SilentWarper final : public PointerWarper {
  public:
    void CGWarpMouseCursorPosition(CGPoint /*position*/) override { warps += 1; }
    void CGAssociateMouseAndMouseCursorPosition(bool /*connected*/) override {}

    int warps = 0;
};

class SilentTimer final : public Timer {
  public:
    void invalidate() override { isInvalidated = true; }
    [[nodiscard]] bool isValid() const override { return !isInvalidated; }

    bool isInvalidated = false;
};

TEST_F(GlideAnimationTest, tick_eachOfTheEighteen_allocatesNothing) {
    SilentWarper warper;
    SilentTimer timer;
    const Platform all = fakes.platform();
    const auto gliding =
        AppDelegate::create(Platform{all.application, all.displays, all.pointerReader, warper, all.hotKeys,
                                     all.mainQueue, all.runLoop, all.standardUserDefaults, all.systemStatusBar,
                                     all.sounds, all.uuids, all.urls, all.preferencesWindowViews},
                            vantrelHotKeySignature, AppDelegate::hotKeyPressed);
    gliding->preferencesDidChangeSound(false);
    gliding->glidePointer({1900, 850});
    const std::size_t before = desktop::allocationCount();
    for (int ticks = 1; ticks <= 18; ++ticks) {
        gliding->animationTick(timer);
    }
    EXPECT_EQ(desktop::allocationCount(), before);
    EXPECT_EQ(warper.warps, 18);
    EXPECT_TRUE(timer.isInvalidated) << "all eighteen were done";
}

TEST_F(GlideAnimationTest, tick_afterTheGlide_stopsItsTimerQuietly) {
    controller->glidePointer({1900, 850});
    fakes.mainQueue.advance(whole);
    fakes.journal.clear();
    fake::FakeTimer late(fakes.journal, {}, tick, true, nullptr);
    controller->animationTick(late);
    EXPECT_EQ(fakes.journal, fake::Journal{"invalidate"});
}

TEST_F(GlideAnimationTest, destroy_glideInProgress_stopsTheTimer) {
    controller->glidePointer({1900, 850});
    controller = nullptr;
    EXPECT_EQ(fakes.mainQueue.runningTimers(), 0U);
    fakes.mainQueue.advance(whole);
    EXPECT_TRUE(fakes.pointer.warps.empty());
}

}  // namespace
}  // namespace vantrel
