#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

class SavedPointJumpTest : public ControllerTest {
  protected:
    void SetUp() override {
        layOutTwoDisplays();
        store("animation", "none");
        storePoints({desk, chat, far});
        launch();
    }

    void storePoints(std::initializer_list<const char*> points) {
        std::string json;
        for (const char* const point : points) {
            json += (json.empty() ? "" : ",") + std::string(point);
        }
        store("savedPoints", DefaultsData{"[" + json + "]"});
    }

    static constexpr const char* desk =
        R"({"id":"00000000-0000-0000-0000-0000000000A1","name":"Desk","point":{"x":10,"y":20},"displayID":1})";
    static constexpr const char* chat =
        R"({"id":"00000000-0000-0000-0000-0000000000A2","name":"Chat","point":{"x":-300,"y":400},"displayID":2})";
    static constexpr const char* far =
        R"({"id":"00000000-0000-0000-0000-0000000000A3","name":"Far","point":{"x":9000,"y":-9000}})";
};

TEST_F(SavedPointJumpTest, jump_noPoints_saysSoAndKeepsItsPlaceInTheCycle) {
    ASSERT_EQ(jumpToSavedPoints(2).back(), "Chat");
    storePoints({});
    launch();
    controller->teleportSavedPoint();
    EXPECT_EQ(fakes.statusBar.title, "No points");
    EXPECT_TRUE(calls({"CGWarpMouseCursorPosition", "play"}).empty());
    storePoints({desk, chat, far});
    launch();
    EXPECT_EQ(jumpToSavedPoints(1), std::vector<std::string>{"Far"});
}

TEST_F(SavedPointJumpTest, jump_withSound_movesThenShowsTheName) {
    controller->teleportSavedPoint();
    EXPECT_EQ(fakes.journal,
              (fake::Journal{"CGWarpMouseCursorPosition(10, 20)", "CGAssociateMouseAndMouseCursorPosition(true)",
                             "play(Pop)", "setTitle(Desk)", "asyncAfter(1.2)"}));
}

TEST_F(SavedPointJumpTest, jump_repeated_goesThroughAllAndAround) {
    EXPECT_EQ(jumpToSavedPoints(4), (std::vector<std::string>{"Desk", "Chat", "Far", "Desk"}));
    EXPECT_EQ(fakes.pointer.warps, (std::vector<CGPoint>{{10, 20}, {-300, 400}, {9000, -9000}, {10, 20}}));
}

TEST_F(SavedPointJumpTest, jump_nextPointNoLongerThere_startsAgain) {
    ASSERT_EQ(jumpToSavedPoints(2).back(), "Chat");
    storePoints({desk, chat});
    launch();
    EXPECT_EQ(jumpToSavedPoints(2), (std::vector<std::string>{"Desk", "Chat"}));

    storePoints({desk, chat, far, desk});
    launch();
    ASSERT_EQ(jumpToSavedPoints(3).back(), "Far");
    storePoints({desk, chat});
    launch();
    EXPECT_EQ(jumpToSavedPoints(2), (std::vector<std::string>{"Desk", "Chat"}));
}

TEST_F(SavedPointJumpTest, jump_onePoint_staysOnIt) {
    storePoints({desk});
    relaunch();
    EXPECT_EQ(jumpToSavedPoints(2), (std::vector<std::string>{"Desk", "Desk"}));
    EXPECT_EQ(fakes.pointer.warps, (std::vector<CGPoint>{{10, 20}, {10, 20}}));
}

TEST_F(SavedPointJumpTest, jump_always_asksForNoLayoutAndStoresAndRemembersNothing) {
    fakes.pointer.location = {-300, 400};
    controller->teleportSavedPoint();
    EXPECT_TRUE(calls({"CGGetActiveDisplayList", "setObjects", "setMenu"}).empty());
    controller->teleportNextDisplay();
    EXPECT_EQ(storedData("rememberedPositions"), R"({"1":{"x":10,"y":20}})");
}

TEST_F(SavedPointJumpTest, jump_glide_startsItAndShowsTheName) {
    controller->preferencesDidChangeAnimation(AnimationStyle::glide);
    controller->teleportSavedPoint();
    EXPECT_EQ(calls({"scheduledTimer", "setTitle", "play"}),
              (fake::Journal{"scheduledTimer(0.008888888888888889, repeating)", "setTitle(Desk)"}));
}

}  // namespace
}  // namespace vantrel
