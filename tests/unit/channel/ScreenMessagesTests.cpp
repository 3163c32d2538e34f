#include "Vantrel/Channel/ScreenMessages.hpp"

#include <gtest/gtest.h>

namespace vantrel::screen_messages {
namespace {

TEST(ScreenMessages, text_sentAndRead_isTheSame) {
    const ScreenText text{.text = "Point saved\n<b>Büro</b>", .fontSize = 12.5, .isSemibold = false};
    EXPECT_EQ(shownText(showText(text)), text);
    EXPECT_FALSE(shownText(Message(hideText)));
    EXPECT_FALSE(shownText({"show-text", g_variant_new("s", "another form")}));
}

TEST(ScreenMessages, rows_sentAndRead_areTheSame) {
    const std::vector<MenuRow> rows{
        {.isSeparator = false, .isEnabled = false, .title = "Vantrel", .keyEquivalent = ""},
        {.isSeparator = true, .isEnabled = false, .title = "", .keyEquivalent = ""},
        {.isSeparator = false, .isEnabled = true, .title = "Settings...", .keyEquivalent = ","}};
    EXPECT_EQ(openedMenu(openMenu(rows)), rows);
    EXPECT_EQ(updatedMenu(updateMenu(rows)), rows);
    EXPECT_EQ(openedMenu(openMenu({})), std::vector<MenuRow>());
    EXPECT_FALSE(openedMenu(updateMenu(rows)));
    EXPECT_FALSE(updatedMenu(openMenu(rows)));
}

TEST(ScreenMessages, chosenRow_sentAndRead_isTheSame) {
    EXPECT_EQ(chosenRow(chooseRow(11)), 11U);
    EXPECT_FALSE(chosenRow(Message(menuClosed)));
}

}  // namespace
}  // namespace vantrel::screen_messages
