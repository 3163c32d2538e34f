#include <functional>
#include <limits>

#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

/// Saving and clearing, with the settings window open so that its refresh is seen.
class SaveCurrentPointTest : public ControllerTest {
  protected:
    void SetUp() override {
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
    EXPECT_EQ(calls({"CGEventCreate", "CGGetActiveDisplayList", "setObjects", "setMenu", "window.setShortcutStatus",
                     "play", "setTitle", "CGWarpMouseCursorPosition"}),
              (fake::Journal{"CGEventCreate", "CGGetActiveDisplayList(0)", "CGGetActiveDisplayList(2)",
                             "setObjects(savedPoints=" + json + ")", "setMenu",
                             "window.setShortcutStatus(Ready. With Raycast Hyper Key, use Caps Lock + D., secondary)",
                             "play(Pop)", "setTitle(Saved)"}));
    ASSERT_EQ(fields.savedPoints().size(), 1U);
    EXPECT_EQ(fields.savedPoints()[0].point, VantrelPoint(-1020.5, 102));
    EXPECT_EQ(fields.savedPoints()[0].displayID, 2U);
    EXPECT_EQ(fields.savedPointIndex(), 0);
}

TEST_F(SaveCurrentPointTest, save_withoutSound_isSilent) {
    fields.soundEnabled() = false;
    controller->saveCurrentPoint();
    EXPECT_TRUE(calls({"play"}).empty());
    EXPECT_EQ(fakes.statusBar.title, "Saved");
}

TEST_F(SaveCurrentPointTest, save_afterTwoPoints_namesTheThirdAndMakesItNext) {
    controller->saveCurrentPoint();
    controller->saveCurrentPoint();
    fields.savedPointIndex() = 0;
    fakes.pointer.location = {5, 6};
    controller->saveCurrentPoint();
    ASSERT_EQ(fields.savedPoints().size(), 3U);
    EXPECT_EQ(fields.savedPoints()[2].name, "Point 3");
    EXPECT_EQ(fields.savedPoints()[2].displayID, 1U);
    EXPECT_EQ(fields.savedPointIndex(), 2);
    EXPECT_NE(fields.savedPoints()[0].id, fields.savedPoints()[1].id);
    fields.animationStyle() = AnimationStyle::none;
    controller->teleportSavedPoint();
    EXPECT_EQ(fakes.pointer.location, (CGPoint{5, 6}));
}

TEST_F(SaveCurrentPointTest, save_always_setsTheNextPointBeforeItStores) {
    controller->saveCurrentPoint();
    fields.savedPointIndex() = 0;
    std::int64_t indexWhileStoring = -1;
    fakes.defaults.whenStoring = [&] { indexWhileStoring = fields.savedPointIndex(); };
    controller->saveCurrentPoint();
    EXPECT_EQ(indexWhileStoring, 1);
}

TEST_F(SaveCurrentPointTest, save_withoutLayout_savesWithoutADisplay) {
    fakes.displays.layout.clear();
    controller->saveCurrentPoint();
    ASSERT_EQ(fields.savedPoints().size(), 1U);
    EXPECT_EQ(fields.savedPoints()[0].displayID, std::nullopt);
    EXPECT_EQ(storedData("savedPoints"),
              R"([{"id":"00000000-0000-0000-0000-000000000001","name":"Point 1","point":{"x":-1020.5,"y":102}}])");
}

TEST_F(SaveCurrentPointTest, save_pointerOnNoDisplay_takesTheNearest) {
    fakes.pointer.location = {5000, 5000};
    controller->saveCurrentPoint();
    ASSERT_EQ(fields.savedPoints().size(), 1U);
    EXPECT_EQ(fields.savedPoints()[0].displayID, 1U);
    EXPECT_EQ(fields.savedPoints()[0].point, VantrelPoint(5000, 5000));
}

TEST_F(SaveCurrentPointTest, save_pointerOnTwoOverlappingDisplays_takesTheLeftmost) {
    fakes.displays.layout = {{1, CGRect{{0, 0}, {1512, 982}}}, {2, CGRect{{-200, 0}, {1024, 768}}}};
    fakes.pointer.location = {100, 100};
    controller->saveCurrentPoint();
    ASSERT_EQ(fields.savedPoints().size(), 1U);
    EXPECT_EQ(fields.savedPoints()[0].displayID, 2U);
}

TEST_F(SaveCurrentPointTest, save_pointerUnreadable_saysSoAndChangesNothing) {
    fakes.pointer.isReadable = false;
    controller->saveCurrentPoint();
    EXPECT_EQ(fakes.statusBar.title, "No cursor");
    EXPECT_TRUE(fields.savedPoints().empty());
    EXPECT_TRUE(calls({"CGGetActiveDisplayList", "setObjects", "setMenu", "play"}).empty());
}

TEST_F(SaveCurrentPointTest, save_positionWithoutJSONForm_keepsThePointInMemory) {
    fakes.pointer.location = {std::numeric_limits<double>::infinity(), 0};
    controller->saveCurrentPoint();
    EXPECT_EQ(fields.savedPoints().size(), 1U);
    EXPECT_TRUE(calls({"setObjects"}).empty());
    EXPECT_EQ(fakes.statusBar.title, "Saved");
}

TEST_F(SaveCurrentPointTest, clear_somePoints_forgetsThemInOrder) {
    controller->saveCurrentPoint();
    controller->saveCurrentPoint();
    fields.rememberedPositions() = {{1, {2, 3}}};
    fakes.journal.clear();
    controller->clearSavedPoints();
    EXPECT_EQ(calls({"setObjects", "setMenu", "window.setSavedPointsSummary", "setTitle", "play"}),
              (fake::Journal{"setObjects(savedPoints=[])", "setMenu",
                             "window.setSavedPointsSummary(No saved cursor points.)", "setTitle(Cleared)"}));
    EXPECT_TRUE(fields.savedPoints().empty());
    EXPECT_EQ(fields.savedPointIndex(), 0);
    EXPECT_EQ(fields.rememberedPositions().size(), 1U);
}

TEST_F(SaveCurrentPointTest, clear_fromMenuOrWindow_goesBackToTheFirstPointBeforeItStores) {
    for (const auto& clear : {std::function<void()>([this] { controller->clearSavedPoints(); }),
                              std::function<void()>([this] { controller->preferencesDidClearSavedPoints(); })}) {
        fields.savedPoints().resize(3);
        fields.savedPointIndex() = 2;
        std::int64_t indexWhileStoring = -1;
        fakes.defaults.whenStoring = [&] { indexWhileStoring = fields.savedPointIndex(); };
        clear();
        EXPECT_EQ(indexWhileStoring, 0);
    }
}

TEST_F(SaveCurrentPointTest, clear_noPoints_storesTheEmptyListAllTheSame) {
    fields.savedPointIndex() = 4;
    controller->clearSavedPoints();
    EXPECT_EQ(calls({"setObjects", "setMenu", "setTitle"}),
              (fake::Journal{"setObjects(savedPoints=[])", "setMenu", "setTitle(Cleared)"}));
    EXPECT_EQ(fields.savedPointIndex(), 0);
}

}  // namespace
}  // namespace vantrel
