#include <limits>
#include <utility>

#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

class TeleportDisplayTest : public ControllerTest {
  protected:
    void SetUp() override {
        store("animation", "none");
        launch();
        layOutTwoDisplays();
        fakes.pointer.location = {700, 500};
    }
};

TEST_F(TeleportDisplayTest, jump_withSound_doesEverythingInOrder) {
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(fakes.journal, (fake::Journal{"CGGetActiveDisplayList(0)", "CGGetActiveDisplayList(2)",
                                            "CGDisplayBounds(1)", "CGDisplayBounds(2)", "CGEventCreate",
                                            R"(setObjects(rememberedPositions={"1":{"x":700,"y":500}}))",
                                            "CGWarpMouseCursorPosition(-512, 484)",
                                            "CGAssociateMouseAndMouseCursorPosition(true)", "play(Pop)"}));
}

TEST_F(TeleportDisplayTest, jump_withoutSound_isSilent) {
    controller->preferencesDidChangeSound(false);
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-512, 484}));
    EXPECT_TRUE(calls({"play"}).empty());
}

TEST_F(TeleportDisplayTest, jump_thereAndBack_returnsToTheSamePlace) {
    controller->teleportDisplay(TeleportDirection::next);
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{700, 500}));
    EXPECT_EQ(storedPositions(), (Positions{{"1", {700, 500}}, {"2", {-512, 484}}}));
}

TEST_F(TeleportDisplayTest, jump_fromCloseToAnEdge_storesThePlaceAndComesBackInside) {
    fakes.pointer.location = {-1020, 102};
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(storedData("rememberedPositions"), R"({"2":{"x":-1020,"y":102}})");
    controller->teleportDisplay(TeleportDirection::previous);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-1000, 124}));
}

TEST_F(TeleportDisplayTest, jump_anyTime_storesAllRememberedDisplays) {
    store("rememberedPositions", DefaultsData{R"({"99":{"x":1,"y":2}})"});
    relaunch();
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(storedPositions(), (Positions{{"1", {700, 500}}, {"99", {1, 2}}}));
}

TEST_F(TeleportDisplayTest, jump_pointerOnNoDisplay_countsAsOnTheNearest) {
    fakes.pointer.location = {5000, 5000};
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(storedPositions(), (Positions{{"1", {5000, 5000}}}));
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-512, 484}));
}

TEST_F(TeleportDisplayTest, jump_pointerOnTwoOverlappingDisplays_leavesTheOneFurtherLeft) {
    fakes.displays.layout = {{1, CGRect{{500, 0}, {1000, 800}}}, {2, CGRect{{0, 0}, {1000, 800}}}};
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(storedPositions(), (Positions{{"2", {700, 500}}}));
    EXPECT_EQ(fakes.pointer.location, (CGPoint{1000, 400}));
}

TEST_F(TeleportDisplayTest, jump_pointerEquallyFarFromTwoDisplays_leavesTheOneFurtherLeft) {
    fakes.displays.layout = {{1, CGRect{{800, 0}, {600, 800}}}, {2, CGRect{{0, 0}, {600, 800}}}};
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(storedPositions(), (Positions{{"2", {700, 500}}}));
    EXPECT_EQ(fakes.pointer.location, (CGPoint{1100, 400}));
}

TEST_F(TeleportDisplayTest, jump_departure_isStoredBeforeTheTargetIsChosen) {
    // What is remembered by the end of the store decides the target.
    bool isRead = false;
    fakes.defaults.whenStoring = [&] {
        if (!std::exchange(isRead, true)) {
            fakes.defaults.readLate({{"rememberedPositions", DefaultsData{R"({"2":{"x":-300,"y":400}})"}}});
        }
    };
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-300, 400}));
}

TEST_F(TeleportDisplayTest, jump_threeDisplays_goesByDirectionFromLeftToRight) {
    fakes.displays.layout = {
        {3, CGRect{{1512, 0}, {1000, 800}}}, {1, CGRect{{0, 0}, {1512, 982}}}, {2, CGRect{{-1024, 100}, {1024, 768}}}};
    controller->teleportNextDisplay();
    EXPECT_EQ(fakes.pointer.location, (CGPoint{2012, 400}));
    controller->teleportPreviousDisplay();
    EXPECT_EQ(fakes.pointer.location, (CGPoint{700, 500}));
    controller->teleportPreviousDisplay();
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-512, 484}));
    controller->teleportPreviousDisplay();
    EXPECT_EQ(fakes.pointer.location, (CGPoint{2012, 400}));
}

TEST_F(TeleportDisplayTest, jump_singleDisplay_staysOrIsPulledInAndSounds) {
    fakes.displays.layout = {{1, CGRect{{0, 0}, {1512, 982}}}};
    const std::vector<std::pair<CGPoint, CGPoint>> cases{
        {{700, 500}, {700, 500}}, {{3, 981}, {24, 958}}, {{0, 0}, {24, 24}}};
    for (const auto& [start, end] : cases) {
        fakes.pointer.location = start;
        fakes.journal.clear();
        controller->teleportDisplay(TeleportDirection::next);
        EXPECT_EQ(fakes.pointer.location, end);
        EXPECT_EQ(calls({"play"}), fake::Journal{"play(Pop)"});
    }
}

TEST_F(TeleportDisplayTest, jump_success_showsNothingAndRebuildsNothing) {
    controller->openSettings();
    fakes.journal.clear();
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_TRUE(calls({"setTitle", "setMenu", "window.setShortcutStatus"}).empty());
}

TEST_F(TeleportDisplayTest, jump_noDisplay_saysSoBeforeReadingThePointer) {
    struct Case {
        std::vector<fake::FakeDisplays::Display> layout;
        CGError countStatus;
        CGError listStatus;
    };
    const fake::FakeDisplays::Display good{1, CGRect{{0, 0}, {1512, 982}}};
    const fake::FakeDisplays::Display noWidth{2, CGRect{{0, 0}, {0, 982}}};
    const fake::FakeDisplays::Display noHeight{3, CGRect{{0, 0}, {1512, 0}}};
    for (const Case& row :
         {Case{{}, 0, 0}, Case{{good}, 1000, 0}, Case{{good}, 0, 1000}, Case{{noWidth, noHeight}, 0, 0}}) {
        fakes.displays.layout = row.layout;
        fakes.displays.countStatus = row.countStatus;
        fakes.displays.listStatus = row.listStatus;
        fakes.journal.clear();
        controller->teleportDisplay(TeleportDirection::next);
        EXPECT_EQ(fakes.statusBar.title, "No display");
        EXPECT_TRUE(calls({"CGEventCreate", "CGWarpMouseCursorPosition", "setObjects", "play"}).empty());
    }
}

TEST_F(TeleportDisplayTest, jump_countFails_doesNotAskForTheList) {
    fakes.displays.countStatus = 1000;
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(calls({"CGGetActiveDisplayList"}), fake::Journal{"CGGetActiveDisplayList(0)"});
}

TEST_F(TeleportDisplayTest, jump_countIsZero_doesNotAskForTheList) {
    fakes.displays.layout.clear();
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(calls({"CGGetActiveDisplayList"}), fake::Journal{"CGGetActiveDisplayList(0)"});
}

TEST_F(TeleportDisplayTest, jump_moreReportedThanAskedFor_usesThoseInTheList) {
    fakes.displays.listedCount = 5;
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(calls({"CGGetActiveDisplayList", "CGDisplayBounds"}),
              (fake::Journal{"CGGetActiveDisplayList(0)", "CGGetActiveDisplayList(2)", "CGDisplayBounds(1)",
                             "CGDisplayBounds(2)"}));
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-512, 484}));
}

TEST_F(TeleportDisplayTest, teleport_noTarget_saysSoAndMovesNothing) {
    controller->teleport(std::nullopt);
    EXPECT_EQ(fakes.statusBar.title, "No target");
    EXPECT_TRUE(calls({"CGWarpMouseCursorPosition", "play"}).empty());
}

TEST_F(TeleportDisplayTest, jump_displaysWithoutSize_areSkipped) {
    fakes.displays.layout.push_back({3, CGRect{{1512, 0}, {0, 0}}});
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-512, 484}));
}

TEST_F(TeleportDisplayTest, jump_displayWithNegativeSize_isTakenAsItsArea) {
    fakes.displays.layout = {{1, CGRect{{0, 0}, {1512, 982}}}, {2, CGRect{{0, 868}, {-1024, -768}}}};
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-512, 484}));
}

TEST_F(TeleportDisplayTest, jump_displayGoneBetweenTheTwoQuestions_usesThoseThatAreLeft) {
    fakes.displays.afterCount = [this] { fakes.displays.layout.pop_back(); };
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(calls({"CGGetActiveDisplayList", "CGDisplayBounds"}),
              (fake::Journal{"CGGetActiveDisplayList(0)", "CGGetActiveDisplayList(2)", "CGDisplayBounds(1)"}));
    EXPECT_EQ(fakes.pointer.location, (CGPoint{700, 500}));
}

TEST_F(TeleportDisplayTest, jump_displayNewBetweenTheTwoQuestions_waitsForTheNextJump) {
    fakes.displays.afterCount = [this] {
        fakes.displays.layout.push_back({3, CGRect{{1512, 0}, {1000, 800}}});
        fakes.displays.afterCount = nullptr;
    };
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-512, 484}));
}

TEST_F(TeleportDisplayTest, jump_manyDisplays_countsThemAll) {
    fakes.displays.layout.clear();
    for (std::uint32_t index = 0; index < 100; ++index) {
        fakes.displays.layout.push_back({index + 1, CGRect{{index * 100.0, 0}, {100, 100}}});
    }
    fakes.pointer.location = {5, 5};
    controller->teleportPreviousDisplay();
    EXPECT_EQ(fakes.pointer.location, (CGPoint{9950, 50}));
}

TEST_F(TeleportDisplayTest, jump_pointerUnreadable_saysSoAndStoresNothing) {
    fakes.pointer.isReadable = false;
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(fakes.statusBar.title, "No cursor");
    EXPECT_TRUE(calls({"CGWarpMouseCursorPosition", "setObjects", "play"}).empty());
    fakes.pointer.isReadable = true;
    fakes.pointer.location = {-300, 400};
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(storedPositions(), (Positions{{"2", {-300, 400}}})) << "nothing was remembered of display 1";
}

TEST_F(TeleportDisplayTest, jump_positionWithoutJSONForm_goesOnWithoutStoring) {
    fakes.pointer.location = {std::numeric_limits<double>::quiet_NaN(), 500};
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_TRUE(calls({"setObjects"}).empty());
    EXPECT_EQ(fakes.pointer.warps.size(), 1U);
}

TEST_F(TeleportDisplayTest, jump_glide_onlyStartsIt) {
    controller->preferencesDidChangeAnimation(AnimationStyle::glide);
    fakes.journal.clear();
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(calls({"setObjects", "scheduledTimer", "CGWarpMouseCursorPosition", "play"}),
              (fake::Journal{R"(setObjects(rememberedPositions={"1":{"x":700,"y":500}}))",
                             "scheduledTimer(0.008888888888888889, repeating)"}));
    fakes.mainQueue.advance(Seconds(0.16));
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-512, 484}));
    EXPECT_EQ(calls({"play"}).size(), 1U);
}

TEST_F(TeleportDisplayTest, teleportPrimary_byMode_jumpsToDisplayOrSavedPoint) {
    controller->teleportPrimary();
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-512, 484}));
    controller->preferencesDidChangeMode(VantrelMode::manual);
    controller->teleportPrimary();
    EXPECT_EQ(fakes.statusBar.title, "No points");
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-512, 484}));
}

}  // namespace
}  // namespace vantrel
