#include "helpers/messages/MenuView.hpp"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "helpers/messages/CairoHandles.hpp"

namespace vantrel::overlay {
namespace {

constexpr Rect mainDisplay{.x = 0, .y = 0, .width = 1512, .height = 982};
constexpr std::uint32_t letterQ = 'q';
constexpr std::uint32_t cyrillicShortI = 0x06CA;  // where Q is on a Russian keyboard

MenuRow row(std::string title, bool isEnabled = true, std::string keyEquivalent = {}) {
    return {.isSeparator = false,
            .isEnabled = isEnabled,
            .title = std::move(title),
            .keyEquivalent = std::move(keyEquivalent)};
}

/// A menu at (300, 200), with what became of it.
class MenuViewTest : public testing::Test {
  protected:
    MenuViewTest() { view.placeAt({.x = 300, .y = 200}, mainDisplay); }

    void press(std::uint32_t keysym) { view.keyPressed(std::vector{keysym}, false); }
    /// In the middle of a row of the first three, which are alike.
    [[nodiscard]] Point onRow(int index) const {
        const int third = (view.bounds().height - 2 * 5) / 3;
        return {.x = view.bounds().x + 40, .y = view.bounds().y + 5 + index * third + third / 2};
    }

    Typesetter typesetter;
    int changes = 0;
    int ends = 0;
    std::optional<std::size_t> chosen;
    MenuView view{typesetter,
                  {row("Vantrel", false), row("Teleport Now"), row("Quit Vantrel", true, "q")},
                  {.changed = [this] { ++changes; },
                   .ended =
                       [this](std::optional<std::size_t> index) {
                           ++ends;
                           chosen = index;
                       }}};
    static constexpr Point elsewhere{.x = 20, .y = 900};
};

TEST_F(MenuViewTest, keys_arrowsAndEnter_chooseTheRow) {
    press(XKB_KEY_Down);
    press(XKB_KEY_Down);
    press(XKB_KEY_Up);
    press(XKB_KEY_Return);
    EXPECT_EQ(chosen, 1U);
    EXPECT_EQ(changes, 3);
}

TEST_F(MenuViewTest, keys_homeAndEnd_pointAtTheFirstAndTheLastChoice) {
    press(XKB_KEY_End);
    press(XKB_KEY_Home);
    press(XKB_KEY_space);
    EXPECT_EQ(chosen, 1U);
}

TEST_F(MenuViewTest, keys_enterWithoutAPointedRow_doesNothing) {
    press(XKB_KEY_Return);
    press(XKB_KEY_KP_Enter);
    press(XKB_KEY_space);
    EXPECT_EQ(ends, 0);
}

TEST_F(MenuViewTest, keys_escape_leavesOnce) {
    press(XKB_KEY_Down);
    press(XKB_KEY_Escape);
    press(XKB_KEY_Return);
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(chosen, std::nullopt);
}

TEST_F(MenuViewTest, keys_equivalentInAnyLayout_choosesItsRow) {
    view.keyPressed(std::vector{cyrillicShortI, letterQ}, true);
    EXPECT_EQ(chosen, 2U);
}

TEST_F(MenuViewTest, keys_equivalentWithoutControlOrOfNoRow_doesNothing) {
    press(letterQ);
    view.keyPressed(std::vector{std::uint32_t{'w'}}, true);
    view.keyPressed(std::vector{cyrillicShortI}, true);
    view.keyPressed({}, true);
    view.keyPressed({}, false);
    EXPECT_EQ(ends, 0);
}

TEST_F(MenuViewTest, click_onARow_choosesIt) {
    view.buttonPressed(onRow(2));
    view.buttonReleased(onRow(2));
    EXPECT_EQ(chosen, 2U);
}

TEST_F(MenuViewTest, click_onADisabledRow_doesNothing) {
    view.buttonPressed(onRow(0));
    view.buttonReleased(onRow(0));
    EXPECT_EQ(ends, 0);
}

TEST_F(MenuViewTest, release_ofTheOpeningClick_doesNotChoose) {
    view.buttonReleased(onRow(1));
    EXPECT_EQ(ends, 0);
}

TEST_F(MenuViewTest, release_afterMovingOntoARow_choosesIt) {
    view.pointerMoved(onRow(1));
    view.buttonReleased(onRow(1));
    EXPECT_EQ(chosen, 1U);
}

TEST_F(MenuViewTest, press_outsideOrOnAnotherDisplay_leaves) {
    for (const std::optional<Point> place : {std::optional(elsewhere), std::optional<Point>()}) {
        std::optional<std::size_t> row = 0;
        MenuView other(typesetter, {overlay::row("Teleport Now")},
                       {.changed = [] {}, .ended = [&](std::optional<std::size_t> index) { row = index; }});
        other.placeAt({.x = 300, .y = 200}, mainDisplay);
        other.buttonPressed(place);
        EXPECT_EQ(row, std::nullopt);
    }
}

TEST_F(MenuViewTest, pointer_leavesTheMenu_noRowIsPointedAt) {
    view.pointerMoved(onRow(1));
    view.pointerMoved(std::nullopt);
    press(XKB_KEY_Return);
    EXPECT_EQ(ends, 0);
    EXPECT_EQ(changes, 2);
}

TEST_F(MenuViewTest, rows_replaced_aPointedRowThatIsGoneIsForgotten) {
    press(XKB_KEY_End);
    view.setRows({row("Vantrel", false), row("Teleport Now")});
    press(XKB_KEY_Return);
    EXPECT_EQ(ends, 0);
}

TEST_F(MenuViewTest, place_middle_isInTheMiddleOfTheDisplay) {
    view.placeInTheMiddleOf(mainDisplay);
    const Rect& bounds = view.bounds();
    EXPECT_LE(std::abs(2 * bounds.x + bounds.width - mainDisplay.width), 1);
    EXPECT_LE(std::abs(2 * bounds.y + bounds.height - mainDisplay.height), 1);
}

TEST_F(MenuViewTest, draw_pointedRow_isDrawnInAnotherColour) {
    const auto pixelOn = [&](Point place) {
        const SurfacePointer surface(
            cairo_image_surface_create(CAIRO_FORMAT_ARGB32, view.bounds().width, view.bounds().height));
        const CairoPointer context(cairo_create(surface.get()));
        view.draw(context.get(), true);
        cairo_surface_flush(surface.get());
        const unsigned char* const line = cairo_image_surface_get_data(surface.get()) +
                                          (place.y - view.bounds().y) * cairo_image_surface_get_stride(surface.get());
        return reinterpret_cast<const std::uint32_t*>(line)[2];
    };
    const std::uint32_t before = pixelOn(onRow(1));
    view.pointerMoved(onRow(1));
    EXPECT_NE(pixelOn(onRow(1)), before);
    EXPECT_EQ(pixelOn(onRow(2)), before);
}

}  // namespace
}  // namespace vantrel::overlay
