#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

class SavedPointJumpTest : public ControllerTest {
  protected:
    void SetUp() override {
        launch();
        layOutTwoDisplays();
        fields.animationStyle() = AnimationStyle::none;
        fields.savedPoints() = {SavedPoint{UUID(), "Desk", {10, 20}, 1}, SavedPoint{UUID(), "Chat", {-300, 400}, 2},
                                SavedPoint{UUID(), "Far", {9000, -9000}, std::nullopt}};
    }
};

TEST_F(SavedPointJumpTest, jump_noPoints_saysSo) {
    fields.savedPoints().clear();
    fields.savedPointIndex() = 5;
    controller->teleportSavedPoint();
    EXPECT_EQ(fakes.statusBar.title, "No points");
    EXPECT_TRUE(calls({"CGWarpMouseCursorPosition", "play"}).empty());
    EXPECT_EQ(fields.savedPointIndex(), 5);
}

TEST_F(SavedPointJumpTest, jump_withSound_movesThenShowsTheName) {
    controller->teleportSavedPoint();
    EXPECT_EQ(fakes.journal,
              (fake::Journal{"CGWarpMouseCursorPosition(10, 20)", "CGAssociateMouseAndMouseCursorPosition(true)",
                             "play(Pop)", "setTitle(Desk)", "asyncAfter(1.2)"}));
}

TEST_F(SavedPointJumpTest, jump_repeated_goesThroughAllAndAround) {
    const std::vector<std::pair<CGPoint, std::int64_t>> expected{
        {{10, 20}, 1}, {{-300, 400}, 2}, {{9000, -9000}, 0}, {{10, 20}, 1}};
    for (const auto& [place, index] : expected) {
        controller->teleportSavedPoint();
        EXPECT_EQ(fakes.pointer.location, place);
        EXPECT_EQ(fields.savedPointIndex(), index);
    }
}

TEST_F(SavedPointJumpTest, jump_indexPastTheEnd_startsAgain) {
    for (const std::int64_t index : {3, 7}) {
        fields.savedPointIndex() = index;
        controller->teleportSavedPoint();
        EXPECT_EQ(fakes.pointer.location, (CGPoint{10, 20}));
        EXPECT_EQ(fields.savedPointIndex(), 1);
    }
}

TEST_F(SavedPointJumpTest, jump_onePoint_staysOnIt) {
    fields.savedPoints().resize(1);
    controller->teleportSavedPoint();
    controller->teleportSavedPoint();
    EXPECT_EQ(fakes.pointer.warps.size(), 2U);
    EXPECT_EQ(fields.savedPointIndex(), 0);
}

TEST_F(SavedPointJumpTest, jump_always_asksForNoLayoutAndStoresNothing) {
    fields.savedPointIndex() = 2;
    controller->teleportSavedPoint();
    EXPECT_TRUE(calls({"CGGetActiveDisplayList", "setObjects", "setMenu"}).empty());
    EXPECT_TRUE(fields.rememberedPositions().empty());
}

TEST_F(SavedPointJumpTest, jump_glide_startsItAndShowsTheName) {
    fields.animationStyle() = AnimationStyle::glide;
    controller->teleportSavedPoint();
    EXPECT_EQ(calls({"scheduledTimer", "setTitle", "play"}),
              (fake::Journal{"scheduledTimer(0.008888888888888889, repeating)", "setTitle(Desk)"}));
}

}  // namespace
}  // namespace vantrel
