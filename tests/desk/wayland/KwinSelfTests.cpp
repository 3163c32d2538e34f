// The desk on KWin: a compositor of an ordinary user, and hands and eyes in it.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/desk/wayland/support/KwinDesk.hpp"
#include "tests/desk/wayland/support/TypingWindow.hpp"
#include "tests/desk/wayland/support/WaylandClient.hpp"

namespace vantrel::desk {
namespace {

KwinOptions threeOfOneShape() {
    return {.outputs = {{.mode = "640x480"},
                        {.mode = "400x300", .x = -400, .y = -100},
                        {.mode = "640x480", .x = 640, .y = 60, .scale = "1.25", .transform = "90"}}};
}

/// Whether this program is, when it connects now.
bool isOfferedHands(const KwinProcess& kwin) {
    bool isOffered = false;
    WaylandClient client(kwin.socket(),
                         [&](std::uint32_t /*name*/, std::string_view interface, std::uint32_t /*version*/) {
                             isOffered |= interface == "org_kde_kwin_fake_input";
                         });
    client.synchronise();
    return isOffered;
}

TEST(KwinDesk, start_asRoot_isAnOrdinaryUsers) {
    const KwinProcess kwin(threeOfOneShape());
    struct stat process {};
    ASSERT_EQ(stat(("/proc/" + std::to_string(kwin.processId())).c_str(), &process), 0);
    EXPECT_NE(process.st_uid, 0U);
}

TEST(KwinDesk, allow_programNotAllowedBefore_mayDoMoreFromThenOn) {
    if (!KwinProcess::checksPermissions()) {
        GTEST_SKIP() << "KWin cannot learn here which programs its clients run";
    }
    KwinOptions options = threeOfOneShape();
    options.allowsPerson = false;
    const KwinProcess kwin(options);
    EXPECT_FALSE(isOfferedHands(kwin));
    kwin.allow(std::filesystem::read_symlink("/proc/self/exe"));
    EXPECT_TRUE(waitUntil([&] { return isOfferedHands(kwin); }));
}

TEST(KwinDesk, moveTo_eachDisplay_isSeenThere) {
    const KwinProcess kwin(threeOfOneShape());
    SeatClient person(kwin.socket(), "us");
    EXPECT_EQ(person.displayCount(), 3U);
    for (const LayoutPoint point :
         {LayoutPoint{.x = 500, .y = 400}, {.x = -390, .y = -90}, {.x = 900, .y = 400}, {.x = -390, .y = 150}}) {
        EXPECT_NO_THROW(person.moveTo(point)) << point;
    }
}

TEST(KwinDesk, moveTo_anyDisplayFromAnyOther_isSeenThere) {
    const KwinProcess kwin(threeOfOneShape());
    SeatClient person(kwin.socket(), "us");
    // Near the corners of each.
    const std::vector<LayoutPoint> points{{.x = 10, .y = 10},    {.x = 630, .y = 470},  {.x = -390, .y = -90},
                                          {.x = -10, .y = 190},  {.x = -390, .y = 190}, {.x = 650, .y = 70},
                                          {.x = 1014, .y = 560}, {.x = 1014, .y = 70}};
    for (const LayoutPoint from : points) {
        for (const LayoutPoint to : points) {
            person.moveTo(from);
            EXPECT_NO_THROW(person.moveTo(to)) << from << " to " << to;
        }
    }
}

TEST(KwinDesk, arrange_inACorner_isSeenThere) {
    KwinDesk desk;
    desk.person().moveTo(centreOfSecond);
    desk.compositor().arrange({{.mode = "640x480"}, {.mode = "320x240", .x = -320, .y = 480}});
    EXPECT_TRUE(waitUntil([&] {
        desk.person().moveUnseenTo({.x = -300, .y = 700});
        return desk.person().waitFor({.x = -300, .y = 700}, quietTime);
    }));
    EXPECT_NO_THROW(desk.person().moveTo(onMain));
}

TEST(KwinDesk, switchOff_second_isOneLess) {
    KwinDesk desk;
    ASSERT_TRUE(desk.compositor().switchOff(2));
    EXPECT_TRUE(waitUntil([&] { return desk.person().displayCount() == 1; }));
    EXPECT_NO_THROW(desk.person().moveTo(onMain));
    desk.compositor().arrange(WaylandDesk::twoOutputs());
    EXPECT_TRUE(waitUntil([&] { return desk.person().displayCount() == 2; }));
    EXPECT_NO_THROW(desk.person().moveTo(centreOfSecond));
}

TEST(KwinDesk, type_keys_arrive) {
    KwinDesk desk;
    TypingWindow window(desk.compositor().socket());
    desk.person().type({keys::d});
    EXPECT_TRUE(waitUntil([&] { return window.presses() == 1; }));
    desk.person().type(hyper(keys::s));
    EXPECT_TRUE(waitUntil([&] { return window.presses() == 6; }));
}

TEST(KwinDesk, chooseLayout_second_isTaken) {
    KwinOptions options = KwinDesk::twoDisplays();
    options.keyboardLayouts = "us,ru";
    KwinDesk desk(options);
    EXPECT_NO_THROW(desk.kwin().chooseLayout(1));
    EXPECT_THROW(desk.kwin().chooseLayout(2), std::runtime_error);
    TypingWindow window(desk.compositor().socket());
    desk.person().type({keys::d});
    EXPECT_TRUE(waitUntil([&] { return window.presses() == 1; }));
}

TEST(KwinDesk, bus_globalShortcuts_areServedToTheAgentsUser) {
    KwinDesk desk;
    EXPECT_NO_THROW(runProgram({"gdbus", "call", "--session", "--dest", "org.kde.kglobalaccel", "--object-path",
                                "/kglobalaccel", "--method", "org.kde.KGlobalAccel.allMainComponents"},
                               desk.environment()));
}

TEST(KwinDesk, pressButton_onTheWindowBehindEverything_isSeen) {
    KwinDesk desk;
    desk.person().moveTo(onMain);
    desk.person().pressButton();
    desk.person().releaseButton();
    EXPECT_TRUE(desk.person().waitForClicks(1));
}

}  // namespace
}  // namespace vantrel::desk
