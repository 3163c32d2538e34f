// The menu that the item opens itself, where no panel does.
#include <xcb/xcb.h>

#include "tests/desk/status/StatusDesk.hpp"

namespace vantrel::desk {
namespace {

namespace keysyms {
constexpr std::uint32_t escape = 0xFF1B;
constexpr std::uint32_t down = 0xFF54;
constexpr std::uint32_t enter = 0xFF0D;
}  // namespace keysyms

class PopupMenu : public StatusDesk {
  protected:
    /// Opens the menu, which has the keyboard as soon as it is seen.
    ScreenWindow open(ItemProcess& process) {
        process.say("popup");
        EXPECT_TRUE(waitForOverlayWindows(1));
        EXPECT_TRUE(isKeyboardGrabbed(desk.connection()));
        const auto windows = overlayWindows();
        return windows.empty() ? ScreenWindow{} : windows.front();
    }
};

TEST_F(PopupMenu, menu_opened_standsAtThePointer) {
    ItemProcess process(desk.environment());
    desk.pointer().moveTo({300, 200});
    const ScreenWindow window = open(process);
    const RootPoint pointer = desk.layout().toRoot({300, 200});
    EXPECT_EQ(window.x, pointer.x);
    EXPECT_EQ(window.y, pointer.y);
}

TEST_F(PopupMenu, menu_atADisplaysCorner_staysOnTheDisplay) {
    ItemProcess process(desk.environment());
    desk.pointer().moveTo({-2, 866});
    const ScreenWindow window = open(process);
    const RootPoint corner = desk.layout().toRoot({-1024, 100});
    EXPECT_GE(window.x, corner.x);
    EXPECT_LE(window.x + window.width, corner.x + 1024);
    EXPECT_LE(window.y + window.height, corner.y + 768);
}

TEST_F(PopupMenu, keys_downAndEnter_chooseTheFirstCommands) {
    ItemProcess process(desk.environment());
    for (const auto& [steps, chosen] : {std::pair{1, "Teleport Now"}, {3, "Previous Display"}, {5, "Settings..."}}) {
        open(process);
        for (int step = 0; step < steps; ++step) {
            typeKeysym(desk.connection(), keysyms::down);
        }
        typeKeysym(desk.connection(), keysyms::enter);
        EXPECT_TRUE(process.waitForLine(std::string("chosen ") + chosen));
        ASSERT_TRUE(waitForOverlayWindows(0));
    }
}

TEST_F(PopupMenu, keys_escape_leavesWithoutAChoice) {
    ItemProcess process(desk.environment());
    open(process);
    typeKeysym(desk.connection(), keysyms::escape);
    EXPECT_TRUE(waitForOverlayWindows(0));
    EXPECT_FALSE(isKeyboardGrabbed(desk.connection()));
    EXPECT_EQ(process.nextLine(), "");
}

TEST_F(PopupMenu, keys_hintOfARow_choosesItInEveryLayoutWithSuchLetters) {
    ItemProcess process(desk.environment());
    for (const char* const layout : {"us", "ru,us", "us,ru"}) {
        setKeyboardMap(desk.server().displayName(), layout);
        for (const auto& [place, chosen] : {std::pair{"AD01", "Quit Vantrel"}, {"AB08", "Settings..."}}) {
            open(process);
            desk.keyboard().type({keys::control, place});
            EXPECT_TRUE(process.waitForLine(std::string("chosen ") + chosen)) << layout;
            ASSERT_TRUE(waitForOverlayWindows(0));
        }
    }
}

TEST_F(PopupMenu, click_onARow_choosesIt) {
    ItemProcess process(desk.environment());
    desk.pointer().moveTo({300, 200});
    const ScreenWindow window = open(process);
    // The last row is "Quit Vantrel".
    desk.pointer().moveTo(desk.layout().toMain({window.x + 40, window.y + window.height - 15}));
    clickButton(desk.connection(), 1);
    EXPECT_TRUE(process.waitForLine("chosen Quit Vantrel"));
    EXPECT_TRUE(waitForOverlayWindows(0));
}

TEST_F(PopupMenu, click_onADisabledRow_doesNothing) {
    ItemProcess process(desk.environment());
    desk.pointer().moveTo({300, 200});
    const ScreenWindow window = open(process);
    // The first row only says "Vantrel".
    desk.pointer().moveTo(desk.layout().toMain({window.x + 40, window.y + 15}));
    clickButton(desk.connection(), 1);
    EXPECT_EQ(process.nextLine(), "");
    EXPECT_EQ(overlayWindows().size(), 1U);
}

TEST_F(PopupMenu, wheel_turnedOverARow_doesNothing) {
    ItemProcess process(desk.environment());
    desk.pointer().moveTo({300, 200});
    const ScreenWindow window = open(process);
    desk.pointer().moveTo(desk.layout().toMain({window.x + 40, window.y + window.height - 15}));
    for (const int wheel : {4, 5}) {
        clickButton(desk.connection(), wheel);
    }
    EXPECT_EQ(process.nextLine(), "");
    EXPECT_EQ(overlayWindows().size(), 1U);
}

TEST_F(PopupMenu, click_elsewhere_leavesWithoutAChoice) {
    ItemProcess process(desk.environment());
    desk.pointer().moveTo({300, 200});
    open(process);
    desk.pointer().moveTo({20, 900});
    clickButton(desk.connection(), 1);
    EXPECT_TRUE(waitForOverlayWindows(0));
    EXPECT_EQ(process.nextLine(), "");
}

TEST_F(PopupMenu, menu_rebuiltWhileOpen_showsTheNewRows) {
    ItemProcess process(desk.environment());
    const int height = open(process).height;
    process.say("rows 3");
    EXPECT_TRUE(waitUntil([&] {
        const auto windows = overlayWindows();
        return windows.size() == 1 && windows.front().height < height;
    }));
}

TEST_F(PopupMenu, menu_anotherProgramHoldsTheKeyboard_isSeenWhenItHasIt) {
    ItemProcess process(desk.environment());
    XConnection other(desk.server().displayName());
    const XReply<xcb_grab_keyboard_reply_t> grab(xcb_grab_keyboard_reply(
        other.get(),
        xcb_grab_keyboard(other.get(), 0, other.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    ASSERT_TRUE(grab && grab->status == XCB_GRAB_STATUS_SUCCESS);
    process.say("popup");
    ASSERT_TRUE(waitUntil([&] { return hasWindow(desk.connection(), overlayClass); }));
    EXPECT_TRUE(overlayWindows().empty());
    xcb_ungrab_keyboard(other.get(), XCB_CURRENT_TIME);
    other.synchronise();
    ASSERT_TRUE(waitForOverlayWindows(1));
    EXPECT_TRUE(isKeyboardGrabbed(desk.connection()));
    typeKeysym(desk.connection(), keysyms::escape);
    EXPECT_TRUE(waitForOverlayWindows(0));
}

}  // namespace
}  // namespace vantrel::desk
