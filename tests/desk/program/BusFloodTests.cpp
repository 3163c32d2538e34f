// A program that floods the agent with messages: hot keys and the request to end are served among them.
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/desk/program/ApplicationOnBus.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

/// Requests for the whole menu: a few bytes to send, and the dearest thing to answer.
class MenuFlood {
  public:
    explicit MenuFlood(const std::string& address) : application_(address) {}

    bool waitForAgent() {
        return waitUntil([&] { return !application_.owner().empty(); });
    }

    /// Has a flood wait for the agent, which is stopped meanwhile, lets it go, and waits until its first part is
    /// answered.
    void begin(AgentProcess& agent) {
        ASSERT_NO_FATAL_FAILURE(stop(agent));
        send(firstPart, G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED);
        ask(isFirstPartServed_);
        send(secondPart, G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED);
        ask(isServed_);
        g_dbus_connection_flush_sync(bus(), nullptr, nullptr);
        agent.sendSignal(SIGCONT);
        ASSERT_TRUE(waitOnBus([&] { return isFirstPartServed_->has_value(); }));
        ASSERT_EQ(*isFirstPartServed_, true);
    }

    /// Has requests wait for the agent and the bus take none of its answers: more than there is room for between them.
    /// Waits until the agent can do no more.
    void leaveAnswersUntaken(AgentProcess& agent, SessionBus& sessionBus) {
        ASSERT_NO_FATAL_FAILURE(stop(agent));
        send(firstPart, G_DBUS_MESSAGE_FLAGS_NONE);
        application_.owner();  // The bus has taken all that came before when it answers this.
        sessionBus.freeze();
        agent.sendSignal(SIGCONT);
        ASSERT_TRUE(waitUntilAtRest(agent.processId()));
    }

    /// Whether the last request has been answered up to now.
    bool isOver() {
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
        return isServed_->has_value();
    }

    /// Waits for the outcome of the last request: whether the agent answered it. None when nobody tells.
    std::optional<bool> outcome() {
        waitOnBus([&] { return isServed_->has_value(); });
        return *isServed_;
    }

  private:
    static constexpr int firstPart = 1000;
    static constexpr int secondPart = 9000;
    static constexpr auto path = "/org/vantrel/Vantrel/Menu";
    static constexpr auto interface = "com.canonical.dbusmenu";
    static constexpr auto method = "GetLayout";

    static GVariant* arguments() { return g_variant_new("(iias)", 0, -1, nullptr); }

    [[nodiscard]] GDBusConnection* bus() { return application_.bus().get(); }

    void stop(AgentProcess& agent) {
        agentName_ = application_.owner();
        agent.sendSignal(SIGSTOP);
        ASSERT_TRUE(waitUntil([&] { return isStopped(agent.processId()); }));
    }

    void send(int times, GDBusMessageFlags flags) {
        for (int time = 0; time < times; ++time) {
            const GObjectPointer<GDBusMessage> message(
                g_dbus_message_new_method_call(agentName_.c_str(), path, interface, method));
            g_dbus_message_set_flags(message.get(), flags);
            g_dbus_message_set_body(message.get(), arguments());
            g_dbus_connection_send_message(bus(), message.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
        }
    }

    /// One request whose answer counts.
    void ask(const std::shared_ptr<std::optional<bool>>& isAnswered) {
        // Whoever asked may be gone when the connection closes.
        using Answered = std::shared_ptr<std::optional<bool>>;
        const auto finished = [](GObject* source, GAsyncResult* result, gpointer data) {
            const GVariantPointer answer(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
            const std::unique_ptr<Answered> shared(static_cast<Answered*>(data));
            **shared = answer != nullptr;
        };
        auto shared = std::make_unique<Answered>(isAnswered);
        g_dbus_connection_call(bus(), agentName_.c_str(), path, interface, method, arguments(), nullptr,
                               G_DBUS_CALL_FLAGS_NO_AUTO_START, G_MAXINT, nullptr, finished, shared.release());
    }

    ApplicationOnBus application_;
    std::string agentName_;
    std::shared_ptr<std::optional<bool>> isFirstPartServed_ = std::make_shared<std::optional<bool>>();
    std::shared_ptr<std::optional<bool>> isServed_ = std::make_shared<std::optional<bool>>();
};

TEST(BusFlood, messages_hotKeysAreServedAmongThem) {
    // Served a flood at a time, few keys would find their turn: all that is ready comes before the next one.
    constexpr int presses = 10;
    Desk desk;
    const auto agent = desk.startAgent();
    MenuFlood flood(desk.bus().address());
    ASSERT_TRUE(flood.waitForAgent());
    desk.pointer().moveTo(onMain);
    ASSERT_NO_FATAL_FAILURE(flood.begin(*agent));
    for (int press = 0; press < presses; ++press) {
        desk.keyboard().type(hyper(keys::d));
        const MainPoint target = press % 2 == 0 ? centreOfSecond : onMain;
        ASSERT_TRUE(desk.pointer().waitFor(target)) << desk.pointer().position();
    }
    EXPECT_FALSE(flood.isOver()) << "the keys waited for the whole flood";
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

TEST(BusFlood, messages_requestToEndIsServedAmongThem) {
    Desk desk;
    const auto agent = desk.startAgent();
    MenuFlood flood(desk.bus().address());
    ASSERT_TRUE(flood.waitForAgent());
    ASSERT_NO_FATAL_FAILURE(flood.begin(*agent));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(flood.outcome(), false) << "the request waited for the whole flood";
    EXPECT_EQ(agent->standardError(), "");
}

TEST(BusFlood, messages_areAllServed) {
    Desk desk;
    const auto agent = desk.startAgent();
    MenuFlood flood(desk.bus().address());
    ASSERT_TRUE(flood.waitForAgent());
    ASSERT_NO_FATAL_FAILURE(flood.begin(*agent));
    EXPECT_EQ(flood.outcome(), true);
}

TEST(BusFlood, answersThatTheBusDoesNotTake_agentEndsWithoutThem) {
    Desk desk;
    const auto agent = desk.startAgent();
    MenuFlood flood(desk.bus().address());
    ASSERT_TRUE(flood.waitForAgent());
    ASSERT_NO_FATAL_FAILURE(flood.leaveAnswersUntaken(*agent, desk.bus()));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(agent->standardError(), "");
    desk.bus().thaw();
}

TEST(BusFlood, urls_requestToEndIsServedAmongThem) {
    constexpr int many = 100000;
    Desk desk;
    const auto agent = desk.startAgent();
    ApplicationOnBus application(desk.bus().address());
    ASSERT_TRUE(waitUntil([&] { return !application.owner().empty(); }));
    desk.pointer().moveTo(onMain);
    std::vector<std::string> urls(many, "vantrel:next");
    urls.emplace_back("vantrel:save-point");
    EXPECT_EQ(application.open(urls), "");
    ASSERT_TRUE(desk.pointer().catchDeparture(onMain));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(desk.defaults().read("savedPoints"), std::nullopt) << "the request waited for the whole flood";
}

}  // namespace
}  // namespace vantrel::desk
