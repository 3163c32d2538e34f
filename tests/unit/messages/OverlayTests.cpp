#include "helpers/messages/Overlay.hpp"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>
#include <functional>
#include <memory>
#include <utility>

namespace vantrel::overlay {
namespace {

using Shown = std::vector<std::string>;

/// Notes what it is to show; nothing for no text.
class NotedStage final : public Stage {
  public:
    explicit NotedStage(Shown& shown) : shown_(shown) {}

    void showText(const std::string& text, const Font& /*font*/) override { shown_.push_back(text); }
    void hideText() override { shown_.emplace_back(); }
    void openMenu(std::vector<MenuRow> rows, Chosen /*chosen*/) override {
        shown_.push_back("menu of " + std::to_string(rows.size()));
    }
    void updateMenu(std::vector<MenuRow> /*rows*/) override {}
    [[nodiscard]] int descriptor() const override { return -1; }
    void serve() override {}
    [[nodiscard]] bool isLost() const override { return false; }
    [[nodiscard]] std::optional<Clock::time_point> nextWork() const override { return std::nullopt; }
    void doDueWork() override {}

  private:
    Shown& shown_;
};

/// What is shown of all that is sent before the program looks.
Shown shownOf(const std::function<void(Channel& agent)>& send) {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()), 0);
    Channel agent{FileDescriptor(ends[0])};
    send(agent);
    EXPECT_TRUE(agent.isOpen());
    Shown shown;
    Overlay overlay(std::make_unique<NotedStage>(shown), Channel{FileDescriptor(ends[1])});
    agent.close();
    overlay.run();
    return shown;
}

TEST(Overlay, textsThatComeAtOnce_onlyTheLastIsPainted) {
    const Shown shown = shownOf([](Channel& agent) {
        for (int time = 0; time < 100; ++time) {
            agent.send(messageOf(ScreenText{.text = "Bad URL"}));
        }
        agent.send(messageOf(ScreenText{.text = "Saved"}));
    });
    EXPECT_EQ(shown, Shown{"Saved"});
}

TEST(Overlay, textHiddenAtOnce_isNotPainted) {
    const Shown shown = shownOf([](Channel& agent) {
        agent.send(messageOf(ScreenText{.text = "Saved"}));
        agent.send(Message(screen_messages::hideText));
    });
    EXPECT_EQ(shown, Shown{""});
}

TEST(Overlay, textAndMenuAtOnce_bothAreShown) {
    const Shown shown = shownOf([](Channel& agent) {
        agent.send(messageOf(ScreenText{.text = "Saved"}));
        agent.send(messageOf(OpenMenu{.rows = {MenuRow{}}}));
    });
    EXPECT_EQ(shown, (Shown{"menu of 1", "Saved"}));
}

}  // namespace
}  // namespace vantrel::overlay
