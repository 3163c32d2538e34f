// What the loop serves first when everything is ready at once.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Vantrel/Desktop/Loop/GLibMainQueue.hpp"
#include "Vantrel/Desktop/Loop/GLibRunLoop.hpp"
#include "Vantrel/Desktop/Loop/URLQueue.hpp"
#include "Vantrel/Handles/LoopSource.hpp"
#include "tests/unit/loop/TestLoop.hpp"

namespace vantrel::desktop {
namespace {

using Log = std::vector<std::string>;

TEST(LoopOrder, turn_everythingIsReady_servesWhatAPersonWaitsForFirst) {
    TestLoop loop;
    Log served;
    // Made in the reverse order, so that the order of making does not decide.
    const auto noted = [&](int priority, const char* name) {
        return LoopSource::after({}, [&served, name] { served.emplace_back(name); }, {priority, loop.context()});
    };
    const auto idle = noted(G_PRIORITY_DEFAULT_IDLE, "idle work");
    URLQueue urls([&served](const std::string& /*url*/) { served.emplace_back("URLs"); }, loop.context());
    urls.append(std::vector<std::string>{"vantrel:next"});
    urls.resume();
    GLibMainQueue mainQueue(loop.context());
    mainQueue.asyncAfter(Seconds(0), std::make_shared<DispatchWorkItem>([&served] { served.emplace_back("delayed"); }));
    const auto bus = noted(G_PRIORITY_DEFAULT, "bus");
    GLibRunLoop runLoop(loop.context());
    const auto timer =
        runLoop.scheduledTimer(Seconds(0.0001), false, [&served](Timer&) { served.emplace_back("timer"); });
    const auto server = noted(G_PRIORITY_HIGH, "X server");
    mainQueue.async([&served] { served.emplace_back("task"); });
    g_usleep(1000);
    while (loop.turn()) {
    }
    EXPECT_EQ(served, (Log{"task", "X server", "timer", "delayed", "bus", "URLs", "idle work"}));
}

}  // namespace
}  // namespace vantrel::desktop
