#include "helpers/messages/MenuLayout.hpp"

#include <gtest/gtest.h>

namespace vantrel::overlay {
namespace {

const MenuRow command{.isSeparator = false, .isEnabled = true, .title = "Teleport Now", .keyEquivalent = ""};
const MenuRow information{.isSeparator = false, .isEnabled = false, .title = "Vantrel", .keyEquivalent = ""};
const MenuRow separator{.isSeparator = true, .isEnabled = false, .title = "", .keyEquivalent = ""};
constexpr MenuMeasures measures{.row = 20, .separator = 8, .margin = 4};

TEST(MenuLayout, rows_mixed_standBelowOneAnother) {
    const MenuLayout layout({information, separator, command}, measures);
    EXPECT_EQ(layout.top(0), 4);
    EXPECT_EQ(layout.top(1), 24);
    EXPECT_EQ(layout.top(2), 32);
    EXPECT_EQ(layout.rowHeight(1), 8);
    EXPECT_EQ(layout.height(), 56);
}

TEST(MenuLayout, rowAt_eachHeight_isTheRowThere) {
    const MenuLayout layout({information, separator, command}, measures);
    const std::pair<int, std::optional<std::size_t>> expectations[] = {
        {-1, std::nullopt}, {3, std::nullopt}, {4, 0}, {23, 0}, {24, 1}, {31, 1}, {32, 2}, {51, 2}, {52, std::nullopt}};
    for (const auto& [y, row] : expectations) {
        EXPECT_EQ(layout.rowAt(y), row) << y;
    }
}

TEST(MenuLayout, rowAt_noRows_isNone) {
    const MenuLayout layout({}, measures);
    EXPECT_EQ(layout.rowAt(4), std::nullopt);
    EXPECT_EQ(layout.height(), 8);
}

TEST(MenuChoice, nextChoice_mixedRows_skipsWhatCannotBeChosenAndGoesRound) {
    const std::vector<MenuRow> rows{information, separator, command, information, command};
    EXPECT_EQ(nextChoice(rows, std::nullopt, true), 2U);
    EXPECT_EQ(nextChoice(rows, 2, true), 4U);
    EXPECT_EQ(nextChoice(rows, 4, true), 2U);
    EXPECT_EQ(nextChoice(rows, std::nullopt, false), 4U);
    EXPECT_EQ(nextChoice(rows, 2, false), 4U);
}

TEST(MenuChoice, nextChoice_nothingToChoose_isNone) {
    EXPECT_EQ(nextChoice({information, separator}, std::nullopt, true), std::nullopt);
    EXPECT_EQ(nextChoice({}, std::nullopt, true), std::nullopt);
    EXPECT_EQ(nextChoice({}, std::nullopt, false), std::nullopt);
}

TEST(MenuBounds, menuBounds_roomToTheRightAndBelow_beginsAtThePoint) {
    EXPECT_EQ(menuBounds({10, 20}, 100, 200, {0, 0, 1000, 800}), (Rect{10, 20, 100, 200}));
}

TEST(MenuBounds, menuBounds_atTheFarCorner_turnsToTheOtherSide) {
    EXPECT_EQ(menuBounds({990, 790}, 100, 200, {0, 0, 1000, 800}), (Rect{890, 590, 100, 200}));
}

TEST(MenuBounds, menuBounds_displayLeftOfTheMainOne_staysOnIt) {
    EXPECT_EQ(menuBounds({-20, 300}, 100, 200, {-1024, 100, 1024, 768}), (Rect{-120, 300, 100, 200}));
}

TEST(MenuBounds, menuBounds_largerThanTheMonitor_beginsAtItsCorner) {
    EXPECT_EQ(menuBounds({50, 60}, 300, 400, {0, 0, 200, 100}), (Rect{0, 0, 300, 400}));
}

}  // namespace
}  // namespace vantrel::overlay
