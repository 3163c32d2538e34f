#include <functional>
#include <limits>

#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

/// Saving and clearing, with the settings window open so that its refresh is seen.
class SaveCurrentPointTest : public ControllerTest {
  protected:
    void SetUp() override {
        store("animation", "none");
        launch();
        layOutTwoDisplays();
        controller->openSettings();
        fakes.journal.clear();
        fakes.pointer.location = {-1020.5, 102};
    }
};

TEST_F(SaveCurrentPointTest, save_withSound_doesEverythingInOrder) {
    const std::string json = R"([{"id":"00000000-0000-0000-0000-000000000001","name":"Point 1",)"
                             R"("point":{"x":-1020.5,"y":102},"displayID":2}])";
    controller->saveCurrentPoint();
    EXPECT_EQ(calls({"CGEventCreate", "CGGetActiveDisplayList", "setObjects", "setMenu", "window.setContent", "play",
                     "setTitle", "CGWarpMouseCursorPosition"}),
              (fake::Journal{"CGEventCreate", "CGGetActiveDisplayList(0)", "CGGetActiveDisplayList(2)",
                             "setObjects(savedPoints=" + json + ")", "setMenu",
                             "window.setContent(Ready. With Raycast Hyper Key, use Caps Lock + D., secondary)",
                             "play(Pop)", "setTitle(Saved)"}));
}

TEST_F(SaveCurrentPointTest, save_withoutSound_isSilent) {
    controller->preferencesDidChangeSound(false);
    controller->saveCurrentPoint();
    EXPECT_TRUE(calls({"play"}).empty());
    EXPECT_EQ(fakes.statusBar.title, "Saved");
}

TEST_F(SaveCurrentPointTest, save_afterTwoPoints_namesTheThirdAndMakesItNext) {
    controller->saveCurrentPoint();
    controller->saveCurrentPoint();
    ASSERT_EQ(jumpToSavedPoints(1), std::vector<std::string>{"Point 2"});
    fakes.pointer.location = {5, 6};
    controller->saveCurrentPoint();
    const std::vector<SavedPoint> points = storedSavedPoints();
    ASSERT_EQ(points.size(), 3U);
    EXPECT_EQ(points[2].name, "Point 3");
    EXPECT_EQ(points[2].displayID, 1U);
    EXPECT_NE(points[0].id, points[1].id);
    fakes.pointer.location = {7, 8};
    EXPECT_EQ(jumpToSavedPoints(1), std::vector<std::string>{"Point 3"});
    EXPECT_EQ(fakes.pointer.location, (CGPoint{5, 6}));
}

TEST_F(SaveCurrentPointTest, save_always_setsTheNextPointBeforeItStores) {
    controller->saveCurrentPoint();
    std::vector<std::string> shownWhileStoring;
    fakes.defaults.whenStoring = [&] { shownWhileStoring = jumpToSavedPoints(1); };
    controller->saveCurrentPoint();
    EXPECT_EQ(shownWhileStoring, std::vector<std::string>{"Point 2"});
}

TEST_F(SaveCurrentPointTest, save_withoutLayout_savesWithoutADisplay) {
    fakes.displays.layout.clear();
    controller->saveCurrentPoint();
    EXPECT_EQ(storedData("savedPoints"),
              R"([{"id":"00000000-0000-0000-0000-000000000001","name":"Point 1","point":{"x":-1020.5,"y":102}}])");
}

TEST_F(SaveCurrentPointTest, save_pointerOnNoDisplay_takesTheNearest) {
    fakes.pointer.location = {5000, 5000};
    controller->saveCurrentPoint();
    const std::vector<SavedPoint> points = storedSavedPoints();
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(points[0].displayID, 1U);
    EXPECT_EQ(points[0].point, VantrelPoint(5000, 5000));
}

TEST_F(SaveCurrentPointTest, save_pointerOnTwoOverlappingDisplays_takesTheLeftmost) {
    fakes.displays.layout = {{1, CGRect{{0, 0}, {1512, 982}}}, {2, CGRect{{-200, 0}, {1024, 768}}}};
    fakes.pointer.location = {100, 100};
    controller->saveCurrentPoint();
    const std::vector<SavedPoint> points = storedSavedPoints();
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(points[0].displayID, 2U);
}

TEST_F(SaveCurrentPointTest, save_pointerUnreadable_saysSoAndChangesNothing) {
    fakes.pointer.isReadable = false;
    controller->saveCurrentPoint();
    EXPECT_EQ(fakes.statusBar.title, "No cursor");
    EXPECT_TRUE(calls({"CGGetActiveDisplayList", "setObjects", "setMenu", "play"}).empty());
    EXPECT_EQ(jumpToSavedPoints(1), std::vector<std::string>{"No points"});
}

TEST_F(SaveCurrentPointTest, save_positionWithoutJSONForm_keepsThePointInMemory) {
    fakes.pointer.location = {std::numeric_limits<double>::infinity(), 0};
    controller->saveCurrentPoint();
    EXPECT_EQ(savedPointsLine(), "Saved Points: 1 point");
    EXPECT_TRUE(calls({"setObjects"}).empty());
    EXPECT_EQ(fakes.statusBar.title, "Saved");
    EXPECT_EQ(jumpToSavedPoints(1), std::vector<std::string>{"Point 1"});
}

TEST_F(SaveCurrentPointTest, clear_somePoints_forgetsThemInOrder) {
    controller->saveCurrentPoint();
    controller->saveCurrentPoint();
    fakes.journal.clear();
    controller->clearSavedPoints();
    EXPECT_EQ(
        calls({"setObjects", "setMenu", "window.reloadSavedPoints", "setTitle", "play"}),
        (fake::Journal{"setObjects(savedPoints=[])", "setMenu", "window.reloadSavedPoints", "setTitle(Cleared)"}));
    EXPECT_EQ(fakes.preferencesWindowViews.view->content.savedPointsSummary, "No saved cursor points.");
    EXPECT_EQ(jumpToSavedPoints(1), std::vector<std::string>{"No points"});
}

TEST_F(SaveCurrentPointTest, clear_rememberedPositions_stay) {
    fakes.pointer.location = {-300, 400};
    controller->teleportNextDisplay();
    ASSERT_EQ(fakes.pointer.location, (CGPoint{756, 491}));
    controller->saveCurrentPoint();
    controller->clearSavedPoints();
    EXPECT_EQ(storedData("rememberedPositions"), R"({"2":{"x":-300,"y":400}})");
    controller->teleportNextDisplay();
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-300, 400}));
}

TEST_F(SaveCurrentPointTest, clear_fromMenuOrWindow_goesBackToTheFirstPointBeforeItStores) {
    for (const auto& clear : {std::function<void()>([this] { controller->clearSavedPoints(); }),
                              std::function<void()>([this] { controller->preferencesDidClearSavedPoints(); })}) {
        controller->saveCurrentPoint();
        controller->saveCurrentPoint();
        const std::string points = storedData("savedPoints");
        std::vector<std::string> shownWhileStoring;
        // Where the cycle stands shows only when there are points again.
        fakes.defaults.whenStoring = [&] {
            store("savedPoints", DefaultsData{points});
            controller->applicationDidFinishLaunching();
            shownWhileStoring = jumpToSavedPoints(1);
        };
        clear();
        fakes.defaults.whenStoring = nullptr;
        EXPECT_EQ(shownWhileStoring, std::vector<std::string>{"Point 1"});
    }
}

TEST_F(SaveCurrentPointTest, clear_noPoints_storesTheEmptyListAllTheSame) {
    controller->clearSavedPoints();
    EXPECT_EQ(calls({"setObjects", "setMenu", "setTitle"}),
              (fake::Journal{"setObjects(savedPoints=[])", "setMenu", "setTitle(Cleared)"}));
}

}  // namespace
}  // namespace vantrel
