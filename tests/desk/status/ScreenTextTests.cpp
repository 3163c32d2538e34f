// The short text on the screen, where no panel draws the title.
#include <csignal>

#include "tests/desk/status/StatusDesk.hpp"

namespace vantrel::desk {
namespace {

using ScreenText = StatusDesk;

/// Whether the window stands on the display, near its top and in the middle.
bool isAtTheTopOf(const ScreenWindow& window, const RootPoint& corner, int displayWidth) {
    const int fromMiddle = 2 * (window.x - corner.x) + window.width - displayWidth;
    return window.y >= corner.y && window.y < corner.y + 100 && std::abs(fromMiddle) <= 2;
}

TEST_F(ScreenText, title_otherThanTheRestingOne_isShownUntilItReturns) {
    ItemProcess process(desk.environment());
    EXPECT_TRUE(overlayWindows().empty());
    process.say("title Saved");
    ASSERT_TRUE(waitForOverlayWindows(1));
    process.say("title Vantrel");
    EXPECT_TRUE(waitForOverlayWindows(0));
}

TEST_F(ScreenText, title_pointerOnEitherDisplay_isShownThere) {
    ItemProcess process(desk.environment());
    for (const auto& [pointer, corner, width] : {std::tuple{MainPoint{700, 500}, MainPoint{0, 0}, 1512},
                                                 {MainPoint{-500, 400}, MainPoint{-1024, 100}, 1024}}) {
        desk.pointer().moveTo(pointer);
        process.say("title Saved");
        ASSERT_TRUE(waitForOverlayWindows(1));
        EXPECT_TRUE(isAtTheTopOf(overlayWindows().front(), desk.layout().toRoot(corner), width));
        process.say("title Vantrel");
        ASSERT_TRUE(waitForOverlayWindows(0));
    }
}

TEST_F(ScreenText, title_pointerLeavesTheDisplay_followsIt) {
    ItemProcess process(desk.environment());
    desk.pointer().moveTo({700, 500});
    process.say("title Saved");
    ASSERT_TRUE(waitForOverlayWindows(1));
    desk.pointer().moveTo({-500, 400});
    EXPECT_TRUE(waitUntil([&] {
        const auto windows = overlayWindows();
        return windows.size() == 1 && isAtTheTopOf(windows.front(), desk.layout().toRoot({-1024, 100}), 1024);
    }));
}

TEST_F(ScreenText, window_shown_takesNeitherFocusNorClicks) {
    ItemProcess process(desk.environment());
    const auto focus = [&] {
        const XReply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(desk.connection().get(), xcb_get_input_focus(desk.connection().get()), nullptr));
        return reply->focus;
    };
    const xcb_window_t before = focus();
    process.say("title Saved");
    ASSERT_TRUE(waitForOverlayWindows(1));
    const ScreenWindow window = overlayWindows().front();
    EXPECT_TRUE(window.isOverrideRedirect);
    EXPECT_EQ(inputRectangles(desk.connection(), window.identifier), 0);
    EXPECT_EQ(focus(), before);
    EXPECT_FALSE(isKeyboardGrabbed(desk.connection()));
    desk.pointer().moveTo(desk.layout().toMain({window.x + window.width / 2, window.y + window.height / 2}));
    const XReply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
        desk.connection().get(), xcb_query_pointer(desk.connection().get(), desk.connection().root()), nullptr));
    EXPECT_EQ(pointer->child, xcb_window_t{XCB_NONE});
}

TEST_F(ScreenText, titles_inQuickSuccession_areOneWindow) {
    ItemProcess process(desk.environment());
    process.say("title Saved");
    ASSERT_TRUE(waitForOverlayWindows(1));
    const int width = overlayWindows().front().width;
    process.say("title A longer message");
    EXPECT_TRUE(waitUntil([&] {
        const auto windows = overlayWindows();
        return windows.size() == 1 && windows.front().width > width;
    }));
}

TEST_F(ScreenText, title_anyText_fitsOnTheDisplay) {
    ItemProcess process(desk.environment());
    desk.pointer().moveTo({-500, 400});
    std::string endless;
    for (int word = 0; word < 5000; ++word) {
        endless += "Bürö ";
    }
    for (const std::string& title :
         {std::string("عربى"), std::string("東京 🖥"), std::string("\xff\xfe broken"), endless}) {
        process.say("title " + title);
        ASSERT_TRUE(waitForOverlayWindows(1)) << title.substr(0, 20);
        EXPECT_LE(overlayWindows().front().width, 1024 * 7 / 10);
        EXPECT_GT(overlayWindows().front().width, 20);
        process.say("title Vantrel");
        ASSERT_TRUE(waitForOverlayWindows(0));
    }
}

TEST_F(ScreenText, title_empty_showsNothing) {
    ItemProcess process(desk.environment());
    process.say("title ");
    process.say("visible");
    ASSERT_FALSE(process.nextLine(generousDeadline).empty());
    EXPECT_FALSE(process.overlay());
}

TEST_F(ScreenText, panel_drawsLabels_leavesTheScreenAlone) {
    const ProcessName name("mate-panel");
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    ASSERT_TRUE(panel.waitForRegistrations(1));
    ASSERT_TRUE(waitOnBus([&] { return process.isVisible(); }));
    PanelItem item(panel.bus(), panel.items().front());
    // A round trip over the bus, so that the item has the answer about its panel.
    ASSERT_EQ(item.rows().size(), 16U);
    process.say("title Saved");
    ASSERT_TRUE(item.waitForLabel("Saved"));
    EXPECT_FALSE(waitOnBus([&] { return process.overlay().has_value(); }, quietTime));
}

TEST_F(ScreenText, panel_doesNotDrawLabels_leavesTheTextToTheScreen) {
    TestPanel panel(desk.bus().address());
    ItemProcess process(desk.environment());
    ASSERT_TRUE(panel.waitForRegistrations(1));
    ASSERT_TRUE(waitOnBus([&] { return process.isVisible(); }));
    process.say("title Saved");
    EXPECT_TRUE(waitForOverlayWindows(1));
}

TEST_F(ScreenText, overlay_killed_comesBackWithTheNextTitle) {
    ItemProcess process(desk.environment());
    process.say("title Saved");
    ASSERT_TRUE(waitForOverlayWindows(1));
    const auto first = process.overlay();
    ASSERT_TRUE(first);
    kill(*first, SIGKILL);
    ASSERT_TRUE(waitForOverlayWindows(0));
    ASSERT_TRUE(waitUntil([&] { return process.overlay() != first; }));
    process.say("title Vantrel");
    process.say("title Cleared");
    EXPECT_TRUE(waitForOverlayWindows(1));
    EXPECT_NE(process.overlay(), first);
}

TEST_F(ScreenText, overlay_stopped_doesNotStopTheItem) {
    ItemProcess process(desk.environment());
    process.say("title Saved");
    ASSERT_TRUE(waitForOverlayWindows(1));
    const auto overlay = process.overlay();
    ASSERT_TRUE(overlay);
    kill(*overlay, SIGSTOP);
    for (int count = 0; count < 2000; ++count) {
        process.say("title Saved " + std::to_string(count));
    }
    EXPECT_FALSE(process.isVisible());
    kill(*overlay, SIGKILL);
}

TEST_F(ScreenText, item_ends_takesTheOverlayAlong) {
    auto process = std::make_unique<ItemProcess>(desk.environment());
    process->say("title Saved");
    ASSERT_TRUE(waitForOverlayWindows(1));
    kill(process->processId(), SIGKILL);
    EXPECT_TRUE(waitForOverlayWindows(0));
}

}  // namespace
}  // namespace vantrel::desk
