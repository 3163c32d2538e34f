#include "Vantrel/Desktop/Helpers/Helper.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "tests/unit/channel/ChannelEnds.hpp"
#include "tests/unit/helpers/Turns.hpp"

namespace vantrel::desktop {
namespace {

class HelperTest : public testing::Test {
  protected:
    Channel start() {
        ++starts;
        ChannelEnds ends;
        program = std::move(ends.helper);
        return std::move(ends.agent);
    }

    bool programSeesTheEnd() {
        program.receive();
        return !program.isOpen();
    }

    int starts = 0;
    Channel program;
    std::vector<std::string> events;
    Helper helper{[this] { return start(); },
                  {.received = [this](const Message& message) { events.push_back(message.name); },
                   .ended = [this](const std::string&) { events.emplace_back("(ended)"); }}};
};

TEST_F(HelperTest, start_running_startsNoOther) {
    EXPECT_FALSE(helper.isRunning());
    EXPECT_TRUE(helper.start());
    EXPECT_TRUE(helper.start());
    EXPECT_EQ(starts, 1);
}

TEST_F(HelperTest, messages_comeInOrderAndThenTheEnd) {
    helper.start();
    for (int count = 0; count < 40; ++count) {
        program.send(Message("one of many"));
    }
    program.send(Message("last"));
    program.close();
    takeTurns();
    ASSERT_EQ(events.size(), 42U);
    EXPECT_EQ(events[40], "last");
    EXPECT_EQ(events[41], "(ended)");
    EXPECT_FALSE(helper.isRunning());
}

TEST_F(HelperTest, ended_startedAgainInTheCallback_runs) {
    Helper eager{[this] { return start(); },
                 {.received = [](const Message&) {}, .ended = [&](const std::string&) { eager.start(); }}};
    eager.start();
    program.close();
    takeTurns();
    EXPECT_TRUE(eager.isRunning());
    EXPECT_EQ(starts, 2);
}

TEST_F(HelperTest, endAfter_timeUp_hangsUpWithoutAWord) {
    helper.start();
    helper.endAfter(std::chrono::seconds(0));
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (helper.isRunning() && std::chrono::steady_clock::now() < end) {
        g_main_context_iteration(nullptr, TRUE);
    }
    EXPECT_TRUE(programSeesTheEnd());
    EXPECT_TRUE(events.empty());
}

TEST_F(HelperTest, endAfter_keptMeanwhile_stays) {
    helper.start();
    helper.endAfter(std::chrono::seconds(0));
    helper.keep();
    takeTurns();
    EXPECT_TRUE(helper.isRunning());
}

TEST_F(HelperTest, destroyed_programSeesTheEnd) {
    {
        Helper short_{[this] { return start(); },
                      {.received = [](const Message&) {}, .ended = [](const std::string&) {}}};
        short_.start();
    }
    EXPECT_TRUE(programSeesTheEnd());
}

}  // namespace
}  // namespace vantrel::desktop
