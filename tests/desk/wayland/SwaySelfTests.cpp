// The desk that the other tests stand on: a compositor of an ordinary user, and hands and eyes in it.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/desk/wayland/support/SeatClient.hpp"
#include "tests/desk/wayland/support/SwayControl.hpp"
#include "tests/desk/wayland/support/SwayProcess.hpp"

namespace vantrel::desk {
namespace {

SwayOptions threeOutputs() {
    return {.outputs = {{.mode = "1512x982"},
                        {.mode = "1024x768", .x = -1024, .y = -100},
                        {.mode = "1200x800", .x = 1512, .y = 0, .scale = "1.25", .transform = "90"}},
            .configuration = {},
            .files = {}};
}

TEST(SwayDesk, start_asRoot_isAnOrdinaryUsers) {
    const SwayProcess sway(threeOutputs());
    struct stat process {};
    ASSERT_EQ(stat(("/proc/" + std::to_string(sway.processId())).c_str(), &process), 0);
    EXPECT_NE(process.st_uid, 0U);
}

TEST(SwayDesk, moveTo_eachDisplay_isSeenThere) {
    const SwayProcess sway(threeOutputs());
    SeatClient person(sway.socket(), "us");
    for (const LayoutPoint point :
         {LayoutPoint{.x = 700, .y = 500}, {.x = -1000, .y = -90}, {.x = 1600.5, .y = 600.25}}) {
        EXPECT_NO_THROW(person.moveTo(point)) << point;
    }
}

TEST(SwayDesk, type_aPersonsBinding_runsIt) {
    SwayOptions options = threeOutputs();
    options.configuration = "bindsym Ctrl+Mod1+Shift+Mod4+d seat seat0 cursor set 1200 300\n";
    const SwayProcess sway(options);
    SeatClient person(sway.socket(), "us");
    person.moveTo({.x = 700, .y = 500});
    person.type(hyper(keys::d));
    EXPECT_TRUE(person.waitFor({.x = 176, .y = 200}));
    person.moveTo({.x = 700, .y = 500});
    person.type(controlOptionCommand(keys::d));
    EXPECT_TRUE(person.staysAt({.x = 700, .y = 500}));
}

TEST(SwayDesk, run_unknownCommand_throws) {
    const SwayProcess sway(threeOutputs());
    SwayControl control(sway.controlSocket());
    EXPECT_THROW(control.run("nonsense"), std::runtime_error);
    EXPECT_NE(control.ask(SwayControl::getOutputs).find("HEADLESS-3"), std::string::npos);
}

}  // namespace
}  // namespace vantrel::desk
