#include "helpers/settings/AgentLink.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QListView>
#include <QTest>
#include <optional>
#include <set>
#include <vector>

#include "helpers/settings/QtApplication.hpp"
#include "tests/unit/channel/ChannelEnds.hpp"

namespace vantrel::qt {
namespace {

using Kind = WindowReport::Kind;

WindowContent sampleContent() {
    WindowContent content;
    content.recorderTitle = "Hyper + D";
    content.controls.shortcutStatus = "Ready.";
    content.controls.selectedMode = 0;
    content.controls.selectedAnimation = 1;
    content.rows = 1000;
    content.rowsVersion = 1;
    return content;
}

/// The window's program without a display, with the test at the agent's end of the channel.
class AgentLinkTest : public testing::Test {
  protected:
    AgentLinkTest() {
        ChannelEnds ends;
        agent = std::move(ends.agent);
        link.emplace(std::move(ends.helper), [this] { ++timesGone; });
    }

    void show(const WindowContent& content) {
        agent.send(messageOf(content));
        agent.send(Message(settings_messages::show));
        turn();
    }

    void sendContent(const WindowContent& content) {
        agent.send(messageOf(content));
        turn();
    }

    void turn() {
        for (int count = 0; count < 20; ++count) {
            QApplication::processEvents();
        }
        while (const auto message = agent.receive()) {
            if (const auto report = valueOf<WindowReport>(*message)) {
                reports.push_back(*report);
            } else if (const auto row = valueOf<WindowRow>(*message)) {
                wantedRows.insert(row->row);
            } else if (const auto closedAt = valueOf<WindowPlace>(*message)) {
                place = *closedAt;
            }
        }
    }

    QComboBox& modes() { return *link->window().findChildren<QComboBox*>().at(0); }
    QListView& table() { return *link->window().findChild<QListView*>("savedPoints"); }

    void chooseManualMode() {
        modes().setFocus();
        QTest::keyClick(&modes(), Qt::Key_Down);
        turn();
    }

    std::string problem;
    std::unique_ptr<QtApplication> application = QtApplication::start("offscreen", problem);
    Channel agent;
    std::optional<AgentLink> link;
    int timesGone = 0;
    std::vector<WindowReport> reports;
    std::set<std::uint32_t> wantedRows;
    std::optional<WindowPlace> place;
};

TEST_F(AgentLinkTest, content_isShownAndTheShowingReported) {
    show(sampleContent());
    EXPECT_TRUE(link->window().isVisible());
    EXPECT_EQ(modes().currentText(), "Automatic: displays");
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0], (WindowReport{.number = 1, .kind = Kind::shown, .value = 1}));
}

TEST_F(AgentLinkTest, choice_isReportedWithItsValue) {
    show(sampleContent());
    chooseManualMode();
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[1], (WindowReport{.number = 2, .kind = Kind::modeChosen, .value = 1}));
}

TEST_F(AgentLinkTest, content_olderThanTheLastChoice_doesNotFlipItBack) {
    show(sampleContent());
    chooseManualMode();
    WindowContent content = sampleContent();
    content.lastReport = 1;
    sendContent(content);
    EXPECT_EQ(modes().currentIndex(), 1);
    content.lastReport = 2;
    sendContent(content);
    EXPECT_EQ(modes().currentIndex(), 0) << "what the agent has decided counts";
}

TEST_F(AgentLinkTest, content_setByTheAgent_isNoReport) {
    show(sampleContent());
    WindowContent content = sampleContent();
    content.lastReport = 1;
    content.controls.selectedMode = 1;
    content.controls.isSoundChecked = true;
    sendContent(content);
    EXPECT_EQ(modes().currentIndex(), 1);
    EXPECT_EQ(reports.size(), 1U);
}

TEST_F(AgentLinkTest, rows_onlyThoseThatAreDrawn_areAskedFor) {
    show(sampleContent());
    table().grab();
    turn();
    EXPECT_TRUE(wantedRows.contains(0));
    EXPECT_LT(wantedRows.size(), 20U);
    table().scrollToBottom();
    table().grab();
    turn();
    EXPECT_TRUE(wantedRows.contains(999));
    EXPECT_LT(wantedRows.size(), 40U);
}

TEST_F(AgentLinkTest, rowText_comes_isShownUntilThereAreOtherRows) {
    show(sampleContent());
    table().grab();
    const QModelIndex first = table().model()->index(0, 0);
    agent.send(messageOf(WindowRowText{.row = {.rowsVersion = 1, .row = 0}, .text = "Desk - x 1, y 2"}));
    agent.send(messageOf(WindowRowText{.row = {.rowsVersion = 9, .row = 0}, .text = "of other rows"}));
    turn();
    EXPECT_EQ(first.data().toString(), "Desk - x 1, y 2");
    WindowContent content = sampleContent();
    content.lastReport = 1;
    content.rowsVersion = 2;
    sendContent(content);
    EXPECT_EQ(first.data().toString(), "");
}

TEST_F(AgentLinkTest, windowClosed_isReportedWithItsPlace) {
    show(sampleContent());
    link->window().move(30, 40);
    link->window().close();
    turn();
    EXPECT_FALSE(link->window().isVisible());
    EXPECT_EQ(place, (WindowPlace{.x = 30, .y = 40}));
    EXPECT_EQ(reports.back(), (WindowReport{.number = 2, .kind = Kind::shown, .value = 0}));
}

TEST_F(AgentLinkTest, place_isWhereTheWindowComesBack) {
    agent.send(messageOf(WindowPlace{.x = 50, .y = 20}));
    show(sampleContent());
    EXPECT_EQ(link->window().pos(), QPoint(50, 20));
}

TEST_F(AgentLinkTest, agentGone_noticedByADrawnRow_isToldOnce) {
    show(sampleContent());
    agent.close();
    table().scrollToBottom();
    table().grab();
    turn();
    EXPECT_EQ(timesGone, 1);
}

TEST_F(AgentLinkTest, agentGone_noticedByAReport_isToldOnce) {
    show(sampleContent());
    agent.close();
    link->window().close();
    turn();
    EXPECT_EQ(timesGone, 1);
}

TEST_F(AgentLinkTest, agentGone_isToldOnce) {
    show(sampleContent());
    agent.close();
    turn();
    EXPECT_EQ(timesGone, 1);
}

}  // namespace
}  // namespace vantrel::qt
