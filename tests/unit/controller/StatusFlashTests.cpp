#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

class StatusFlashTest : public ControllerTest {
  protected:
    void SetUp() override { launch(); }
};

TEST_F(StatusFlashTest, flash_once_showsTheMessageForItsTime) {
    controller->flashStatus("Saved");
    EXPECT_EQ(fakes.journal, (fake::Journal{"setTitle(Saved)", "asyncAfter(1.2)"}));
    fakes.mainQueue.advance(Seconds(1.199));
    EXPECT_EQ(fakes.statusBar.title, "Saved");
    fakes.mainQueue.advance(Seconds(0.001));
    EXPECT_EQ(fakes.statusBar.title, "Vantrel");
}

TEST_F(StatusFlashTest, flash_duringAnother_startsTheTimeAfresh) {
    controller->flashStatus("Saved");
    fakes.mainQueue.advance(Seconds(0.5));
    controller->flashStatus("Cleared");
    EXPECT_EQ(fakes.mainQueue.pendingItems(), 1U);
    fakes.mainQueue.advance(Seconds(1.199));
    EXPECT_EQ(fakes.statusBar.title, "Cleared");
    fakes.mainQueue.advance(Seconds(0.001));
    EXPECT_EQ(fakes.statusBar.title, "Vantrel");
    EXPECT_EQ(calls({"setTitle"}), (fake::Journal{"setTitle(Saved)", "setTitle(Cleared)", "setTitle(Vantrel)"}));
}

TEST_F(StatusFlashTest, flash_afterAnotherHasEnded_showsItself) {
    controller->flashStatus("Saved");
    fakes.mainQueue.advance(Seconds(2));
    controller->flashStatus("Cleared");
    fakes.mainQueue.advance(Seconds(1.199));
    EXPECT_EQ(fakes.statusBar.title, "Cleared");
    fakes.mainQueue.advance(Seconds(0.001));
    EXPECT_EQ(fakes.statusBar.title, "Vantrel");
}

TEST_F(StatusFlashTest, flash_emptyMessage_showsNothingForItsTime) {
    controller->flashStatus("");
    EXPECT_EQ(fakes.statusBar.title, "");
    fakes.mainQueue.advance(Seconds(1.2));
    EXPECT_EQ(fakes.statusBar.title, "Vantrel");
}

TEST_F(StatusFlashTest, flash_theNormalTitle_isResetAllTheSame) {
    controller->flashStatus("Vantrel");
    fakes.mainQueue.advance(Seconds(1.2));
    EXPECT_EQ(calls({"setTitle"}), (fake::Journal{"setTitle(Vantrel)", "setTitle(Vantrel)"}));
}

TEST_F(StatusFlashTest, flash_withoutButton_schedulesTheResetAllTheSame) {
    fakes.statusBar.hasButton = false;
    controller->flashStatus("Saved");
    EXPECT_EQ(fakes.journal, fake::Journal{"asyncAfter(1.2)"});
    fakes.mainQueue.advance(Seconds(1.2));
    EXPECT_TRUE(calls({"setTitle"}).empty());
}

TEST_F(StatusFlashTest, reset_buttonThatCameMeanwhile_getsTheTitle) {
    fakes.statusBar.hasButton = false;
    controller->flashStatus("Saved");
    fakes.statusBar.hasButton = true;
    fakes.mainQueue.advance(Seconds(1.2));
    EXPECT_EQ(calls({"setTitle"}), fake::Journal{"setTitle(Vantrel)"});
}

TEST_F(StatusFlashTest, reset_controllerGone_doesNothing) {
    controller->flashStatus("Saved");
    EXPECT_EQ(controller.use_count(), 1);
    controller = nullptr;
    fakes.mainQueue.advance(Seconds(1.2));
    EXPECT_EQ(calls({"setTitle"}), fake::Journal{"setTitle(Saved)"});
}

}  // namespace
}  // namespace vantrel
