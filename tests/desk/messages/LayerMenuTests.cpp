// The menu at the pointer on the screen of a compositor.
#include "tests/desk/messages/support/MessagesDesk.hpp"

namespace vantrel::desk {
namespace {

using overlay::Rect;

constexpr std::string_view home = "HOME";

std::vector<MenuRow> rows() {
    return {{.isSeparator = false, .isEnabled = false, .title = "Vantrel", .keyEquivalent = ""},
            {.isSeparator = true, .isEnabled = false, .title = "", .keyEquivalent = ""},
            {.isSeparator = false, .isEnabled = true, .title = "Teleport Now", .keyEquivalent = ""},
            {.isSeparator = false, .isEnabled = true, .title = "Settings...", .keyEquivalent = ","},
            {.isSeparator = false, .isEnabled = true, .title = "Quit Vantrel", .keyEquivalent = "q"}};
}
constexpr std::uint32_t firstCommand = 2;
constexpr std::uint32_t lastCommand = 4;

class LayerMenu : public MessagesDesk {
  protected:
    explicit LayerMenu(const std::string& layouts = "us") : MessagesDesk(usualOptions(), layouts) { startOverlay(); }

    /// Opens the menu at the point and waits until it is seen on the output.
    Rect open(LayoutPoint point, const std::string& output = mainOutput) {
        movePointer(point);
        rememberTheScreen();
        agent.send(messageOf(OpenMenu{rows()}));
        EXPECT_TRUE(waitUntilSeenOn(output));
        return seenOn(output).value_or(Rect{});
    }

    void click() {
        desk.person().pressButton();
        desk.person().releaseButton();
    }

    /// Takes in what the program says; whether the menu has ended.
    bool hasEnded() {
        while (const auto message = agent.receive()) {
            if (const auto choice = valueOf<ChosenRow>(*message)) {
                chosen = choice->row;
            }
            isClosed = isClosed || message->is(screen_messages::menuClosed, "()");
        }
        return isClosed;
    }
    bool waitForEnd() {
        return waitUntil([this] { return hasEnded(); });
    }
    bool staysOpen() {
        return !waitUntil([this] { return hasEnded(); }, quietTime);
    }

    std::optional<std::uint32_t> chosen;
    bool isClosed = false;
};

TEST_F(LayerMenu, menu_opened_standsAtThePointerOnItsDisplay) {
    const Rect menu = open({.x = 300, .y = 200});
    EXPECT_EQ(menu.x, 300);
    EXPECT_EQ(menu.y, 200);
    EXPECT_FALSE(seenOn(secondOutput));
    desk.person().type({keys::escape});
    ASSERT_TRUE(waitForEnd());
    ASSERT_TRUE(waitUntilNothingIsSeen());
    const Rect onSecond = open({.x = -500, .y = 300}, secondOutput);
    EXPECT_EQ(onSecond.x, 140);
    EXPECT_EQ(onSecond.y, 200);
    EXPECT_FALSE(seenOn(mainOutput));
}

TEST_F(LayerMenu, menu_atADisplaysCorner_staysOnTheDisplay) {
    const Rect seen = open({.x = -4, .y = 570}, secondOutput);
    EXPECT_GT(seen.width, 100);
    EXPECT_GT(seen.height, 80);
    EXPECT_FALSE(seenOn(mainOutput));
}

TEST_F(LayerMenu, keys_downAndEnter_chooseARow) {
    open({.x = 300, .y = 200});
    for (const std::string_view key : {keys::down, keys::down, keys::down, keys::down, keys::enter}) {
        desk.person().type({key});
    }
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(chosen, firstCommand) << "three commands, then from the start again";
    EXPECT_TRUE(waitUntilNothingIsSeen());
}

TEST_F(LayerMenu, keys_endHomeAndSpace_chooseARow) {
    open({.x = 300, .y = 200});
    desk.person().type({home});
    desk.person().type({keys::end});
    desk.person().type({keys::space});
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(chosen, lastCommand);
}

TEST_F(LayerMenu, keys_beforeTheMenuIsSeen_areNotLost) {
    movePointer({.x = 300, .y = 200});
    const auto window = openWindow();
    agent.send(messageOf(OpenMenu{rows()}));
    ASSERT_TRUE(waitUntil([&] { return !window->hasKeyboard(); }));
    desk.person().type({keys::escape});
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(chosen, std::nullopt);
    EXPECT_EQ(window->presses(), 0U);
}

TEST_F(LayerMenu, keys_escape_leavesAndEverythingIsFree) {
    const auto window = openWindow();
    open({.x = 300, .y = 400});
    EXPECT_TRUE(waitUntil([&] { return !window->hasKeyboard(); }));
    desk.person().type({keys::d});
    desk.person().type({keys::escape});
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(chosen, std::nullopt);
    EXPECT_TRUE(waitUntilNothingIsSeen());
    EXPECT_TRUE(waitUntil([&] { return window->hasKeyboard(); }));
    EXPECT_EQ(window->presses(), 0U);
    desk.person().type({keys::d});
    EXPECT_TRUE(waitUntil([&] { return window->presses() == 1; }));
    EXPECT_NO_THROW(movePointer({.x = -300, .y = 500}));
}

TEST_F(LayerMenu, keys_heldArrow_goesOn) {
    open({.x = 300, .y = 200});
    const Picture open = camera.take(mainOutput);
    desk.person().hold({keys::down});
    // The first row that can be chosen, then the next ones by the repeats.
    std::optional<Rect> first;
    EXPECT_TRUE(waitUntil([&] {
        first = difference(open, camera.take(mainOutput));
        return first.has_value();
    }));
    EXPECT_TRUE(waitUntil([&] {
        const auto now = difference(open, camera.take(mainOutput));
        return now && now->y > first->y;
    }));
    desk.person().letGo();
}

TEST_F(LayerMenu, keys_thatDoNothing_leaveItOpen) {
    open({.x = 300, .y = 200});
    desk.person().type({keys::d});
    desk.person().type({keys::enter});
    desk.person().type({keys::control, keys::d});
    EXPECT_TRUE(staysOpen());
}

class LayerMenuLayouts : public LayerMenu, public testing::WithParamInterface<const char*> {
  protected:
    LayerMenuLayouts() : LayerMenu(GetParam()) {}
};

TEST_P(LayerMenuLayouts, keys_hintOfARow_choosesIt) {
    open({.x = 300, .y = 200});
    desk.person().type({keys::control, "AD01"});
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(chosen, lastCommand);
}

INSTANTIATE_TEST_SUITE_P(Layouts, LayerMenuLayouts, testing::Values("us", "ru,us", "us,ru"));

TEST_F(LayerMenu, click_onARow_choosesIt) {
    const Rect seen = open({.x = 300, .y = 200});
    putPointer({.x = seen.x + 60.0, .y = seen.y + seen.height - 15.0});
    click();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(chosen, lastCommand);
    EXPECT_TRUE(waitUntilNothingIsSeen());
}

TEST_F(LayerMenu, click_onADisabledRow_doesNothing) {
    const Rect seen = open({.x = 300, .y = 200});
    putPointer({.x = seen.x + 60.0, .y = seen.y + 18.0});
    click();
    EXPECT_TRUE(staysOpen());
}

TEST_F(LayerMenu, click_elsewhereOnEitherDisplay_leavesWithoutAChoice) {
    for (const LayoutPoint elsewhere : {LayoutPoint{.x = 20, .y = 560}, {.x = -500, .y = 400}}) {
        open({.x = 300, .y = 200});
        putPointer(elsewhere);
        click();
        ASSERT_TRUE(waitForEnd());
        EXPECT_EQ(chosen, std::nullopt);
        isClosed = false;
        EXPECT_TRUE(desk.person().waitFor(elsewhere)) << "the pointer is the program's beneath again";
    }
}

TEST_F(LayerMenu, release_ofTheOpeningClick_doesNotChoose) {
    // A compositor says where the pointer is only when the button is up: the menu is in the middle then.
    movePointer({.x = -500, .y = 500});
    rememberTheScreen();
    desk.person().pressButton();
    agent.send(messageOf(OpenMenu{rows()}));
    ASSERT_TRUE(waitUntil([&] { return seenOn(mainOutput) || seenOn(secondOutput); }));
    desk.person().releaseButton();
    EXPECT_TRUE(staysOpen());
    desk.person().type({keys::down});
    desk.person().type({keys::enter});
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(chosen, firstCommand);
}

TEST_F(LayerMenu, pointerNotTold_menuIsInTheMiddleOfADisplay) {
    movePointer({.x = 300, .y = 200});
    rememberTheScreen();
    desk.person().pressButton();
    agent.send(messageOf(OpenMenu{rows()}));
    ASSERT_TRUE(waitUntil([&] { return seenOn(mainOutput) || seenOn(secondOutput); }));
    const bool isOnMain = seenOn(mainOutput).has_value();
    const Rect seen = *seenOn(isOnMain ? mainOutput : secondOutput);
    EXPECT_NEAR(2 * seen.x + seen.width, isOnMain ? mainWidth : secondWidth, 2);
    EXPECT_NEAR(2 * seen.y + seen.height, isOnMain ? mainHeight : secondHeight, 2);
    desk.person().releaseButton();
    const LayoutPoint corner = isOnMain ? LayoutPoint{.x = 0, .y = 0} : secondCorner;
    putPointer({.x = corner.x + seen.x + 60, .y = corner.y + seen.y + seen.height - 15});
    click();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(chosen, lastCommand);
}

TEST_F(LayerMenu, rows_updatedWhileOpen_areShownInTheSamePlace) {
    const Rect former = open({.x = 300, .y = 200});
    std::vector<MenuRow> fewer = rows();
    fewer.pop_back();
    agent.send(messageOf(UpdateMenu{fewer}));
    EXPECT_TRUE(waitUntil([&] {
        const auto seen = seenOn(mainOutput);
        return seen && seen->height < former.height && seen->x == former.x && seen->y == former.y;
    }));
    desk.person().type({keys::end});
    desk.person().type({keys::enter});
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(chosen, lastCommand - 1);
}

TEST_F(LayerMenu, display_ofTheMenuGoes_leavesWithoutAChoice) {
    open({.x = -500, .y = 300}, secondOutput);
    if (!unplug(secondOutput)) {
        GTEST_SKIP() << "this sway cannot unplug a display";
    }
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(chosen, std::nullopt);
    EXPECT_TRUE(agent.isOpen());
}

TEST_F(LayerMenu, display_anotherGoes_leavesTheMenuOpen) {
    open({.x = 300, .y = 200});
    if (!unplug(secondOutput)) {
        GTEST_SKIP() << "this sway cannot unplug a display";
    }
    EXPECT_TRUE(staysOpen());
    desk.person().type({keys::down});
    desk.person().type({keys::enter});
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(chosen, firstCommand);
}

TEST_F(LayerMenu, program_killed_everythingIsFree) {
    const auto window = openWindow();
    open({.x = 300, .y = 400});
    ASSERT_TRUE(waitUntil([&] { return !window->hasKeyboard(); }));
    killOverlay();
    EXPECT_TRUE(waitUntilNothingIsSeen());
    EXPECT_TRUE(waitUntil([&] { return window->hasKeyboard(); }));
    desk.person().type({keys::d});
    EXPECT_TRUE(waitUntil([&] { return window->presses() == 1; }));
    EXPECT_NO_THROW(movePointer({.x = -300, .y = 500}));
}

TEST_F(LayerMenu, message_whileTheMenuIsOpen_isSeenAndLeavesItOpen) {
    open({.x = 300, .y = 300});
    show("Saved");
    EXPECT_TRUE(waitUntilSeenOn(secondOutput));
    EXPECT_TRUE(staysOpen());
    desk.person().type({keys::escape});
    EXPECT_TRUE(waitForEnd());
}

}  // namespace
}  // namespace vantrel::desk
