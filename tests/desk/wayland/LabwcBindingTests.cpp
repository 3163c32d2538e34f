// Keys that a person binds to URLs in labwc's rc.xml, where no program can bind keys.
#include <gtest/gtest.h>

#include "tests/desk/wayland/support/LabwcDesk.hpp"
#include "tests/desk/wayland/support/PersonsProgram.hpp"

namespace vantrel::desk {
namespace {

/// A session in which the agent is started as a person has it started.
class LabwcBinding : public testing::Test {
  protected:
    LabwcBinding() {
        if (!waitUntil([this] { return desk.isServed(); }) || !desk.open("about:blank")) {
            throw std::runtime_error("the agent does not become ready");
        }
        desk.person().moveTo(onMain);
    }

    PersonsProgram program{VANTREL_PROGRAM};
    LabwcDesk desk{{.outputs = WaylandDesk::twoOutputs(),
                    .keyboard = program.binding("W-C-A-S-d", "vantrel://teleport") +
                                program.binding("W-C-A-Left", "vantrel://previous"),
                    .autostart = program.path().native() + " &\n"}};
};

TEST_F(LabwcBinding, chord_jumps) {
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(desk.jump(hyper(keys::d), centreOfSecond)) << desk.person().pointer().value_or(LayoutPoint{});
        ASSERT_TRUE(desk.jump(controlOptionCommand(keys::leftArrow), onMain))
            << desk.person().pointer().value_or(LayoutPoint{})
            << desk.defaults().read("rememberedPositions").value_or("");
    }
}

TEST_F(LabwcBinding, wrongChords_doNothing) {
    desk.person().type({keys::d});
    desk.person().type(controlOptionCommand(keys::d));
    desk.person().type(hyper(keys::leftArrow));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond)) << "the right one does";
}

TEST_F(LabwcBinding, heldKey_jumpsOnce) {
    const auto holdAndLetGo = [&] {
        desk.person().hold(hyper(keys::d));
        // Keys repeat after 600 ms.
        EXPECT_TRUE(desk.person().staysAt(onMain, std::chrono::milliseconds(1500)));
        desk.person().letGo();
    };
    EXPECT_TRUE(desk.jump(holdAndLetGo, centreOfSecond));
    EXPECT_TRUE(desk.person().staysAt(centreOfSecond));
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain)) << "the next press acts again";
}

TEST_F(LabwcBinding, chordAddedLater_jumpsAfterReconfigure) {
    desk.person().type(hyper("AC01"));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    desk.labwc().reconfigure(program.binding("W-C-A-S-a", "vantrel://next"));
    // Until it has: a chord that is typed meanwhile leaves it deaf to that key.
    desk.person().synchronise();
    desk.person().synchronise();
    EXPECT_TRUE(desk.jump(hyper("AC01"), centreOfSecond));
}

}  // namespace
}  // namespace vantrel::desk
