#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <future>

#include "Vantrel/Backends/Sway/SwayIpc.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::sway {
namespace {

/// The other end: answers what the test says, when it says so.
class SwayIpcTest : public testing::Test {
  protected:
    SwayIpcTest() {
        const auto address = socketAddress(place).value_or(sockaddr_un{});
        EXPECT_EQ(bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(listener.get(), 4), 0);
        EXPECT_TRUE(ipc.open());
        accept();
    }

    void accept() { other = FileDescriptor(::accept(listener.get(), nullptr, nullptr)); }

    static std::string message(std::uint32_t type, const std::string& payload) {
        const auto length = static_cast<std::uint32_t>(payload.size());
        std::string text = "i3-ipc";
        text.append(reinterpret_cast<const char*>(&length), sizeof length);
        text.append(reinterpret_cast<const char*>(&type), sizeof type);
        return text + payload;
    }
    void say(const std::string& bytes) const {
        ASSERT_EQ(write(other.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    /// Says that as soon as a message has come.
    [[nodiscard]] std::future<void> answerLater(const std::string& bytes) const {
        return std::async(std::launch::async, [this, bytes] {
            pollfd readable{.fd = other.get(), .events = POLLIN, .revents = 0};
            poll(&readable, 1, -1);
            say(bytes);
        });
    }
    void forgetQuestions() const {
        std::array<char, 256> buffer{};
        EXPECT_GT(read(other.get(), buffer.data(), buffer.size()), 0);
    }
    static Clock::time_point soon() { return Clock::now() + std::chrono::milliseconds(10); }
    static Clock::time_point late() { return Clock::now() + std::chrono::seconds(60); }

    desk::TemporaryDirectory directory{"ipc"};
    std::filesystem::path place = directory.path() / "socket";
    FileDescriptor listener{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    SwayIpc ipc{place};
    FileDescriptor other;
};

TEST_F(SwayIpcTest, peer_isTheProcessThatListens) {
    EXPECT_EQ(ipc.peer(), (Peer{.processId = getpid(), .user = geteuid()}));
    EXPECT_EQ(SwayIpc("").peer(), std::nullopt);
    EXPECT_FALSE(SwayIpc(directory.path() / "none").open());
}

TEST_F(SwayIpcTest, ask_answered_givesTheAnswer) {
    say(message(7, "answer"));
    EXPECT_EQ(ipc.ask(MessageType::getVersion, "question", late()), "answer");
    std::array<char, 64> buffer{};
    const ssize_t count = read(other.get(), buffer.data(), buffer.size());
    EXPECT_EQ(std::string(buffer.data(), static_cast<std::size_t>(count)), message(7, "question"));
}

TEST_F(SwayIpcTest, ask_onlyEventsWithoutEnd_endsAfterTheDeadline) {
    const FileDescriptor speaker(dup(other.get()));
    auto talking = std::async(std::launch::async, [&speaker] {
        const std::string event = message(0x80000005, std::string(1024, 'x'));
        while (send(speaker.get(), event.data(), event.size(), MSG_NOSIGNAL) > 0) {
        }
    });
    EXPECT_EQ(ipc.ask(MessageType::getVersion, "question", soon()), std::nullopt);
    EXPECT_FALSE(ipc.settle(soon()));
    shutdown(speaker.get(), SHUT_RDWR);
}

TEST_F(SwayIpcTest, ask_earlierAnswersOutstanding_givesItsOwn) {
    EXPECT_TRUE(ipc.tell(MessageType::runCommand, "one"));
    EXPECT_TRUE(ipc.tell(MessageType::runCommand, "two"));
    forgetQuestions();
    say(message(0, "1"));
    const auto answer = answerLater(message(0, "2") + message(7, "3"));
    EXPECT_EQ(ipc.ask(MessageType::getVersion, "three", late()), "3");
}

TEST_F(SwayIpcTest, ask_noAnswer_givesNoneAndTheNextItsOwn) {
    EXPECT_EQ(ipc.ask(MessageType::getVersion, "one", soon()), std::nullopt);
    forgetQuestions();
    const auto answer = answerLater(message(7, "1") + message(7, "2"));
    EXPECT_EQ(ipc.ask(MessageType::getVersion, "two", late()), "2");
}

TEST_F(SwayIpcTest, settle_untilAllIsAnswered) {
    EXPECT_TRUE(ipc.settle(soon()));
    EXPECT_TRUE(ipc.tell(MessageType::runCommand, "one"));
    EXPECT_FALSE(ipc.settle(soon()));
    say(message(0, "1"));
    EXPECT_TRUE(ipc.settle(late()));
}

TEST_F(SwayIpcTest, take_messagesInPieces_areWhole) {
    const std::string bytes = message(0x80000005, "first") + message(0x80000000, std::string(100'000, 'x'));
    say(bytes.substr(0, 9));
    EXPECT_TRUE(ipc.take().empty());
    say(bytes.substr(9, 10));
    EXPECT_EQ(ipc.take().at(0).payload, "first");
    say(bytes.substr(19));
    const auto messages = ipc.take();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].type, MessageType::workspaceEvent);
    EXPECT_EQ(messages[0].payload.size(), 100'000U);
}

TEST_F(SwayIpcTest, take_nonsense_closes) {
    say("this is no message of sway's at all");
    EXPECT_TRUE(ipc.take().empty());
    EXPECT_FALSE(ipc.isOpen());
}

TEST_F(SwayIpcTest, tell_otherEndGone_connectsAnew) {
    EXPECT_TRUE(ipc.tell(MessageType::runCommand, "one"));
    other.reset();
    EXPECT_TRUE(ipc.tell(MessageType::runCommand, "two"));
    accept();
    std::array<char, 64> buffer{};
    const ssize_t count = read(other.get(), buffer.data(), buffer.size());
    EXPECT_EQ(std::string(buffer.data(), static_cast<std::size_t>(count)), message(0, "two"));
}

}  // namespace
}  // namespace vantrel::sway
