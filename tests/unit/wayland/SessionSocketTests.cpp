#include <glib.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <future>
#include <optional>

#include "Vantrel/Backends/Wayland/SessionSocket.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::wayland {
namespace {

using URLs = std::vector<std::string>;

class SessionSocketTest : public testing::Test {
  protected:
    /// Has the other start hand over while the loop runs; its result.
    static bool handOver(const SessionSocket& other, const URLs& urls) {
        auto result = std::async(std::launch::async, [&] { return other.send(urls); });
        while (result.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) {
            g_main_context_iteration(nullptr, FALSE);
        }
        return result.get();
    }

    desk::TemporaryDirectory directory{"runtime"};
};

TEST_F(SessionSocketTest, claim_second_isRefusedUntilTheFirstEnds) {
    auto first = std::make_unique<SessionSocket>(directory.path(), "wayland-1");
    SessionSocket second(directory.path(), "wayland-1");
    EXPECT_TRUE(first->claim());
    EXPECT_FALSE(second.claim());
    first.reset();
    EXPECT_TRUE(second.claim());
}

TEST_F(SessionSocketTest, claim_sameDisplayByItsPath_isRefused) {
    SessionSocket first(directory.path(), "wayland-1");
    SessionSocket second(directory.path(), directory.path() / "wayland-1");
    EXPECT_TRUE(first.claim());
    EXPECT_FALSE(second.claim());
}

TEST_F(SessionSocketTest, claim_anotherDisplay_isFree) {
    SessionSocket first(directory.path(), "wayland-1");
    SessionSocket second(directory.path(), "wayland-2");
    SessionSocket third(directory.path(), "/elsewhere/wayland-1");
    EXPECT_TRUE(first.claim());
    EXPECT_TRUE(second.claim());
    EXPECT_TRUE(third.claim());
}

TEST_F(SessionSocketTest, claim_afterAKill_isFree) {
    const pid_t child = fork();
    if (child == 0) {
        SessionSocket first(directory.path(), "wayland-1");
        if (first.claim()) {
            raise(SIGKILL);
        }
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    SessionSocket second(directory.path(), "wayland-1");
    EXPECT_FALSE(second.send({}));
    EXPECT_TRUE(second.claim());
}

TEST_F(SessionSocketTest, claim_noDirectory_isRefused) {
    SessionSocket socket(directory.path() / "none", "wayland-1");
    EXPECT_FALSE(socket.claim());
    EXPECT_FALSE(socket.send({}));
}

TEST_F(SessionSocketTest, claim_noRuntimeDirectory_standsBesideTheDisplay) {
    SessionSocket first({}, directory.path() / "wayland-1");
    EXPECT_TRUE(first.claim());
    SessionSocket second({}, directory.path() / "wayland-1");
    EXPECT_FALSE(second.claim());
}

TEST_F(SessionSocketTest, claim_socketIsForThisUserAlone) {
    SessionSocket socket(directory.path(), "wayland-1");
    ASSERT_TRUE(socket.claim());
    struct stat entry {};
    ASSERT_EQ(stat((directory.path() / "vantrel-wayland-1.sock").c_str(), &entry), 0);
    EXPECT_EQ(entry.st_mode & 0777U, 0600U);
}

TEST_F(SessionSocketTest, send_urls_reachTheAgentAsTheyAre) {
    SessionSocket agent(directory.path(), "wayland-1");
    ASSERT_TRUE(agent.claim());
    std::optional<URLs> opened;
    agent.serve([&](URLs urls) { opened = std::move(urls); });
    const SessionSocket other(directory.path(), "wayland-1");
    const URLs urls{"vantrel://next", "vantrel:\xff\n", std::string(1'000'000, 'x')};
    EXPECT_TRUE(handOver(other, urls));
    EXPECT_EQ(opened, urls);
    EXPECT_TRUE(handOver(other, {}));
    EXPECT_EQ(opened, URLs());
}

TEST_F(SessionSocketTest, send_moreThanItTakes_getsNoReceipt) {
    SessionSocket agent(directory.path(), "wayland-1");
    ASSERT_TRUE(agent.claim());
    bool isOpened = false;
    agent.serve([&](const URLs&) { isOpened = true; });
    const SessionSocket other(directory.path(), "wayland-1");
    EXPECT_FALSE(handOver(other, {std::string(std::size_t{17} * 1024 * 1024, 'x')}));
    EXPECT_FALSE(isOpened);
    EXPECT_TRUE(handOver(other, {"vantrel://next"}));
    EXPECT_TRUE(isOpened);
}

TEST_F(SessionSocketTest, send_brokenOff_isNotOpened) {
    SessionSocket agent(directory.path(), "wayland-1");
    ASSERT_TRUE(agent.claim());
    int opened = 0;
    agent.serve([&](const URLs&) { ++opened; });
    for (const std::string& said : {std::string(), std::string("vantrel://ne"), std::string("vantrel://next\0", 15)}) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, (directory.path() / "vantrel-wayland-1.sock").c_str(),
                     sizeof address.sun_path - 1);
        const FileDescriptor starter(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        ASSERT_EQ(connect(starter.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ASSERT_EQ(write(starter.get(), said.data(), said.size()), static_cast<ssize_t>(said.size()));
    }
    EXPECT_TRUE(handOver(SessionSocket(directory.path(), "wayland-1"), {"vantrel://next"}));
    EXPECT_EQ(opened, 1);
}

}  // namespace
}  // namespace vantrel::wayland
