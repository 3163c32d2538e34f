#include "Vantrel/Channel/Channel.hpp"

#include <gtest/gtest.h>

#include "tests/unit/channel/ChannelEnds.hpp"

namespace vantrel {
namespace {

void sendRaw(const FileDescriptor& socket, const std::string& packet) {
    ASSERT_EQ(::send(socket.get(), packet.data(), packet.size(), 0), static_cast<ssize_t>(packet.size()));
}

TEST(Channel, messages_bothWays_arriveInOrder) {
    ChannelEnds ends;
    EXPECT_TRUE(ends.agent.send({"first", g_variant_new("s", "Büro")}));
    EXPECT_TRUE(ends.agent.send(Message("second")));
    EXPECT_TRUE(ends.helper.send({"answer", g_variant_new("u", 7U)}));
    const auto first = ends.helper.receive();
    ASSERT_TRUE(first && first->is("first", "s"));
    EXPECT_STREQ(g_variant_get_string(first->body.get(), nullptr), "Büro");
    const auto second = ends.helper.receive();
    EXPECT_TRUE(second && second->is("second", "()"));
    EXPECT_FALSE(ends.helper.receive());
    const auto answer = ends.agent.receive();
    EXPECT_TRUE(answer && answer->is("answer", "u"));
    EXPECT_TRUE(ends.agent.isOpen() && ends.helper.isOpen());
}

TEST(Channel, receive_otherEndGone_closes) {
    ChannelEnds ends;
    EXPECT_FALSE(ends.agent.receive());
    EXPECT_TRUE(ends.agent.isOpen());
    ends.helper.close();
    EXPECT_FALSE(ends.agent.receive());
    EXPECT_FALSE(ends.agent.isOpen());
    EXPECT_EQ(ends.agent.otherVersion(), "");
    EXPECT_FALSE(ends.agent.send(Message("late")));
}

TEST(Channel, receive_otherEndGoneWithMessagesUnread_stillGivesItsLast) {
    ChannelEnds ends;
    ends.agent.send(Message("unread"));
    ends.helper.send(Message("last"));
    ends.helper.close();
    const auto last = ends.agent.receive();
    EXPECT_TRUE(last && last->is("last", "()"));
    EXPECT_FALSE(ends.agent.receive());
    EXPECT_FALSE(ends.agent.isOpen());
}

TEST(Channel, receive_otherVersion_closesAndTellsIt) {
    SocketPair pair;
    Channel agent(std::move(pair.first));
    sendRaw(pair.second, encodedPacket({"version", g_variant_new("s", "99.1")}));
    sendRaw(pair.second, encodedPacket(Message("begun")));
    EXPECT_FALSE(agent.receive());
    EXPECT_FALSE(agent.isOpen());
    EXPECT_EQ(agent.otherVersion(), "99.1");
}

TEST(Channel, receive_noVersionFirst_closes) {
    SocketPair pair;
    Channel agent(std::move(pair.first));
    sendRaw(pair.second, encodedPacket(Message("begun")));
    EXPECT_FALSE(agent.receive());
    EXPECT_FALSE(agent.isOpen());
    EXPECT_NE(agent.otherVersion(), "");
}

TEST(Channel, receive_noise_isPassedOver) {
    SocketPair pair;
    Channel agent(std::move(pair.first));
    sendRaw(pair.second, "no message");
    Channel helper(std::move(pair.second));
    ::send(helper.descriptor(), "x", 1, 0);
    helper.send(Message("after"));
    const auto message = agent.receive();
    EXPECT_TRUE(message && message->is("after", "()"));
}

TEST(Channel, send_otherEndDoesNotRead_endsInsteadOfWaiting) {
    ChannelEnds ends;
    const std::string text(10'000, 'x');
    int sent = 0;
    while (ends.agent.send({"text", g_variant_new("s", text.c_str())})) {
        ASSERT_LT(++sent, 10'000) << "it keeps all that the other end does not read";
    }
    EXPECT_FALSE(ends.agent.receive());
    EXPECT_FALSE(ends.agent.isOpen());
}

TEST(Channel, send_tooLong_isLeftOutAndTheChannelStays) {
    ChannelEnds ends;
    const std::string text(Channel::longestPacket, 'x');
    EXPECT_TRUE(ends.agent.send({"text", g_variant_new("s", text.c_str())}));
    EXPECT_FALSE(ends.helper.receive());
    EXPECT_TRUE(ends.helper.isOpen());
}

TEST(Message, packet_notAMessage_isRefused) {
    EXPECT_FALSE(decodedPacket(""));
    EXPECT_FALSE(decodedPacket("X"));
    EXPECT_FALSE(decodedPacket(std::string(20, '\xFF')));
}

}  // namespace
}  // namespace vantrel
