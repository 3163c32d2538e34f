// What the loop serves first when everything is ready at once.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Vantrel/Desktop/Loop/GLibMainQueue.hpp"
#include "Vantrel/Desktop/Loop/GLibRunLoop.hpp"
#include "Vantrel/Desktop/Loop/URLQueue.hpp"
#include "tests/unit/loop/TestLoop.hpp"

namespace vantrel::desktop {
namespace {

using Log = std::vector<std::string>;

/// A source of the priority that is ready at once and notes its name.
struct NotedSource {
    NotedSource(TestLoop& loop, int priority, const char* sourceName, Log& log) : name(sourceName), served(log) {
        g_source_set_priority(source.get(), priority);
        g_source_set_callback(
            source.get(),
            [](gpointer data) -> gboolean {
                const auto& self = *static_cast<NotedSource*>(data);
                self.served.emplace_back(self.name);
                return G_SOURCE_REMOVE;
            },
            this, nullptr);
        g_source_attach(source.get(), loop.context());
    }

    const char* name;
    Log& served;
    SourceHandle source{g_idle_source_new()};
};

TEST(LoopOrder, turn_everythingIsReady_servesWhatAPersonWaitsForFirst) {
    TestLoop loop;
    Log served;
    // Made in the reverse order, so that the order of making does not decide.
    const NotedSource idle(loop, G_PRIORITY_DEFAULT_IDLE, "idle work", served);
    URLQueue urls([&served](const std::string& /*url*/) { served.emplace_back("URLs"); }, loop.context());
    urls.append(std::vector<std::string>{"vantrel:next"});
    urls.resume();
    GLibMainQueue mainQueue(loop.context());
    mainQueue.asyncAfter(Seconds(0), std::make_shared<DispatchWorkItem>([&served] { served.emplace_back("delayed"); }));
    const NotedSource bus(loop, G_PRIORITY_DEFAULT, "bus", served);
    GLibRunLoop runLoop(loop.context());
    const auto timer =
        runLoop.scheduledTimer(Seconds(0.0001), false, [&served](Timer&) { served.emplace_back("timer"); });
    const NotedSource server(loop, G_PRIORITY_HIGH, "X server", served);
    mainQueue.async([&served] { served.emplace_back("task"); });
    g_usleep(1000);
    while (loop.turn()) {
    }
    EXPECT_EQ(served, (Log{"task", "X server", "timer", "delayed", "bus", "URLs", "idle work"}));
}

}  // namespace
}  // namespace vantrel::desktop
