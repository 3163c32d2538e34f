#include "Vantrel/Backends/Hyprland/HyprlandSocket.hpp"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <thread>

#include "tests/desk/support/TemporaryDirectory.hpp"
#include "tests/desk/support/Wait.hpp"

namespace vantrel::hyprland {
namespace {

/// With the test at Hyprland's end of the socket.
class HyprlandSocketTest : public testing::Test {
  protected:
    void SetUp() override {
        const auto address = socketAddress(place);
        ASSERT_TRUE(address);
        ASSERT_EQ(bind(listener.get(), reinterpret_cast<const sockaddr*>(&*address), sizeof *address), 0);
        ASSERT_EQ(listen(listener.get(), SOMAXCONN), 0);
    }

    static Clock::time_point late() { return Clock::now() + std::chrono::seconds(60); }
    static Clock::time_point soon() { return Clock::now() + std::chrono::milliseconds(20); }

    /// What one request says; it is answered in these parts, and then hung up on.
    std::string answer(const std::vector<std::string>& parts) const {
        const FileDescriptor request(accept(listener.get(), nullptr, nullptr));
        std::array<char, 256> text{};
        const ssize_t count = read(request.get(), text.data(), text.size());
        for (const std::string& part : parts) {
            EXPECT_EQ(write(request.get(), part.data(), part.size()), static_cast<ssize_t>(part.size()));
        }
        return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }

    desk::TemporaryDirectory directory{"hypr"};
    std::filesystem::path place = directory.path() / "socket";
    FileDescriptor listener{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    HyprlandSocket hyprland{place};
};

TEST_F(HyprlandSocketTest, ask_answeredInParts_isTheWholeAnswer) {
    std::string asked;
    std::thread other([&] { asked = answer({"43", ", 228"}); });
    EXPECT_EQ(hyprland.ask("/cursorpos", late()), "43, 228");
    other.join();
    EXPECT_EQ(asked, "/cursorpos");
}

TEST_F(HyprlandSocketTest, ask_noAnswerUntilTheDeadline_isNone) {
    EXPECT_EQ(hyprland.ask("/cursorpos", soon()), std::nullopt);
}

TEST_F(HyprlandSocketTest, askAndTell_nobodyListens_failAtOnce) {
    HyprlandSocket nowhere(directory.path() / "none");
    EXPECT_EQ(nowhere.ask("/cursorpos", late()), std::nullopt);
    EXPECT_FALSE(nowhere.tell("/reload"));
}

TEST_F(HyprlandSocketTest, tell_notAnsweredYet_doesNotWaitAndStaysConnected) {
    EXPECT_TRUE(hyprland.tell("one"));
    EXPECT_TRUE(hyprland.tell("two"));
    EXPECT_EQ(answer({"ok"}), "one");
    EXPECT_EQ(answer({"ok"}), "two");
}

TEST_F(HyprlandSocketTest, tell_neverAnswered_isGivenUpUntilItIs) {
    int count = 0;
    while (hyprland.tell("again")) {
        ASSERT_LT(++count, 1000);
    }
    EXPECT_GE(count, 18) << "a glide's steps";
    answer({"ok"});
    EXPECT_TRUE(desk::waitUntil([&] { return hyprland.tell("again"); }));
}

}  // namespace
}  // namespace vantrel::hyprland
