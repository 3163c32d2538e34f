#include "Vantrel/Backends/Wayfire/WayfireSocket.hpp"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>

#include "tests/desk/support/TemporaryDirectory.hpp"
#include "tests/desk/support/Wait.hpp"

namespace vantrel::wayfire {
namespace {

/// With the test at wayfire's end of the socket.
class WayfireSocketTest : public testing::Test {
  protected:
    void SetUp() override {
        const auto address = socketAddress(place);
        ASSERT_TRUE(address);
        ASSERT_EQ(bind(listener.get(), reinterpret_cast<const sockaddr*>(&*address), sizeof *address), 0);
        ASSERT_EQ(listen(listener.get(), SOMAXCONN), 0);
        wayfire = std::make_unique<WayfireSocket>(place);
        ASSERT_TRUE(wayfire->isOpen());
        other = FileDescriptor(accept(listener.get(), nullptr, nullptr));
        wayfire->setTold([this](const std::string& event) { events.push_back(event); });
    }

    static std::string message(const std::string& json) {
        const auto length = static_cast<std::uint32_t>(json.size());
        return std::string(reinterpret_cast<const char*>(&length), sizeof length) + json;
    }
    void say(const std::string& bytes) const {
        ASSERT_EQ(write(other.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    static void takeTurns() {
        while (g_main_context_iteration(nullptr, FALSE) == TRUE) {
        }
    }
    static Clock::time_point late() { return Clock::now() + std::chrono::seconds(60); }
    static Clock::time_point soon() { return Clock::now() + std::chrono::milliseconds(20); }

    desk::TemporaryDirectory directory{"wayfire"};
    std::filesystem::path place = directory.path() / "socket";
    FileDescriptor listener{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    std::unique_ptr<WayfireSocket> wayfire;
    FileDescriptor other;
    std::vector<std::string> events;
};

TEST_F(WayfireSocketTest, call_answered_givesTheAnswerAndTellsOfEventsLater) {
    say(message(R"({"event":"one"})") + message(R"({"result":"ok"})") + message(R"({"event":"two"})"));
    EXPECT_EQ(wayfire->call(R"({"method":"m"})", late()), R"({"result":"ok"})");
    EXPECT_TRUE(events.empty()) << "nobody is called while an answer is waited for";
    takeTurns();
    EXPECT_EQ(events, (std::vector<std::string>{R"({"event":"one"})", R"({"event":"two"})"}));
}

TEST_F(WayfireSocketTest, call_givenUp_itsLateAnswerIsNotTheNextOnes) {
    EXPECT_EQ(wayfire->call(R"({"method":"first"})", soon()), std::nullopt);
    say(message(R"({"answer":1})") + message(R"({"answer":2})"));
    EXPECT_EQ(wayfire->call(R"({"method":"second"})", late()), R"({"answer":2})");
}

TEST_F(WayfireSocketTest, event_inParts_isToldWhenItIsWhole) {
    const std::string whole = message(R"({"event":"one"})");
    say(whole.substr(0, 9));
    takeTurns();
    EXPECT_TRUE(events.empty());
    say(whole.substr(9));
    takeTurns();
    EXPECT_EQ(events.size(), 1U);
}

TEST_F(WayfireSocketTest, otherEndGone_callFailsAtOnceAndTheLoopSleeps) {
    other.reset();
    EXPECT_EQ(wayfire->call(R"({"method":"m"})", late()), std::nullopt);
    takeTurns();
    EXPECT_FALSE(wayfire->isOpen());
}

TEST_F(WayfireSocketTest, messageWithoutEnd_endsTheConnection) {
    say(std::string("\xFF\xFF\xFF\xFF", 4));
    takeTurns();
    EXPECT_FALSE(wayfire->isOpen());
}

}  // namespace
}  // namespace vantrel::wayfire
