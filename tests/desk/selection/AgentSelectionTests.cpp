// One agent a display, and URLs handed to it without a bus.
#include <glib.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "Vantrel/Backends/X11/X11Session.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {
namespace {

std::unique_ptr<x11::X11Session> connectTo(const std::string& displayName) {
    setenv("DISPLAY", displayName.c_str(), 1);
    std::string error;
    auto platform = x11::X11Session::connect(error);
    EXPECT_TRUE(platform) << error;
    return platform;
}

/// An agent that owns the display and collects what is handed to it, on a thread of its own as in a process of its own.
class Agent {
  public:
    explicit Agent(const std::string& displayName) : platform_(connectTo(displayName)), owns_(platform_->claim()) {
        platform_->attach({.ended = [](const std::string&) {},
                           .opened =
                               [this](std::vector<std::string> urls) {
                                   const std::lock_guard lock(mutex_);
                                   received_.push_back(std::move(urls));
                               }});
        thread_ = std::thread([this] {
            while (!isDone_) {
                g_main_context_iteration(nullptr, TRUE);
            }
        });
    }

    ~Agent() {
        isDone_ = true;
        g_main_context_wakeup(nullptr);
        thread_.join();
        platform_.reset();
    }
    Agent(const Agent&) = delete;
    Agent& operator=(const Agent&) = delete;

    [[nodiscard]] bool owns() const { return owns_; }

    std::vector<std::vector<std::string>> received() {
        const std::lock_guard lock(mutex_);
        return received_;
    }

  private:
    std::unique_ptr<x11::X11Session> platform_;
    bool owns_;
    std::atomic<bool> isDone_{false};
    std::mutex mutex_;
    std::vector<std::vector<std::string>> received_;
    std::thread thread_;
};

class AgentSelectionOnDesk : public testing::Test {
  protected:
    Desk desk{{.hasSessionBus = false, .hasWindowManager = false}};
    const std::string display = desk.server().displayName();
};

TEST_F(AgentSelectionOnDesk, claim_freeDisplay_isOwnedUntilTheAgentGoes) {
    {
        const Agent agent(display);
        EXPECT_TRUE(agent.owns());
        EXPECT_FALSE(connectTo(display)->claim());
    }
    EXPECT_TRUE(waitUntil([&] { return connectTo(display)->claim(); }));
}

TEST_F(AgentSelectionOnDesk, claim_manyAtOnce_oneWins) {
    std::vector<std::unique_ptr<x11::X11Session>> platforms;
    for (int index = 0; index < 8; ++index) {
        platforms.push_back(connectTo(display));
    }
    std::atomic<int> winners{0};
    std::vector<std::thread> threads;
    threads.reserve(platforms.size());
    for (auto& platform : platforms) {
        threads.emplace_back([&] { winners += platform->claim() ? 1 : 0; });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(winners, 1);
}

TEST_F(AgentSelectionOnDesk, send_noAgent_isFalse) {
    EXPECT_FALSE(connectTo(display)->handOver({"vantrel:next"}));
}

TEST_F(AgentSelectionOnDesk, send_urls_arriveInOrderWithTheirTextUnchanged) {
    Agent agent(display);
    const std::vector<std::string> urls{"vantrel:next", "VANTREL:%2D", "vantrel://teleport?direction=previous",
                                        "x:", "vantrel:\xff\xfe"};
    EXPECT_TRUE(connectTo(display)->handOver(urls));
    EXPECT_TRUE(connectTo(display)->handOver({}));
    ASSERT_TRUE(waitUntil([&] { return agent.received().size() == 2; }));
    EXPECT_EQ(agent.received()[0], urls);
    EXPECT_EQ(agent.received()[1], std::vector<std::string>{}) << "started again without URLs";
}

TEST_F(AgentSelectionOnDesk, send_aHundredThousandUrls_allArrive) {
    Agent agent(display);
    const std::vector<std::string> urls(100000, "vantrel://teleport?direction=previous");
    EXPECT_TRUE(connectTo(display)->handOver(urls));
    ASSERT_TRUE(waitUntil([&] { return agent.received().size() == 1; }));
    EXPECT_EQ(agent.received()[0].size(), urls.size());
}

TEST_F(AgentSelectionOnDesk, message_fromAnImpostor_isHarmless) {
    Agent agent(display);
    XConnection& connection = desk.connection();
    const auto atom = [&](const std::string& name) {
        const auto cookie = xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data());
        return XReply<xcb_intern_atom_reply_t> {
            xcb_intern_atom_reply(connection.get(), cookie, nullptr)
            } -> atom;
    };
    const auto ownerCookie = xcb_get_selection_owner(connection.get(), atom("_VANTREL_AGENT"));
    const XReply<xcb_get_selection_owner_reply_t> owner{
        xcb_get_selection_owner_reply(connection.get(), ownerCookie, nullptr)};
    ASSERT_NE(owner->owner, static_cast<xcb_window_t>(XCB_NONE));
    for (const std::uint32_t window : {0U, 1U, 0xFFFFFFFFU, static_cast<std::uint32_t>(connection.root())}) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = owner->owner;
        message.type = atom("_VANTREL_URLS");
        message.data.data32[0] = window;
        xcb_send_event(connection.get(), 0, owner->owner, 0, reinterpret_cast<const char*>(&message));
    }
    connection.synchronise();
    EXPECT_TRUE(connectTo(display)->handOver({"vantrel:next"}));
    ASSERT_TRUE(waitUntil([&] { return agent.received().size() == 1; }));
}

}  // namespace
}  // namespace vantrel::desk
