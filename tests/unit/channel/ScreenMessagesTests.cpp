#include "Vantrel/Channel/ScreenMessages.hpp"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(ScreenMessages, text_sentAndRead_isTheSame) {
    const ScreenText text{.text = "Point saved\n<b>Büro</b>", .fontSize = 12.5, .isSemibold = false};
    EXPECT_EQ(valueOf<ScreenText>(messageOf(text)), text);
    EXPECT_FALSE(valueOf<ScreenText>(Message(screen_messages::hideText)));
    EXPECT_FALSE(valueOf<ScreenText>({"show-text", g_variant_new("s", "another form")}));
}

TEST(ScreenMessages, rows_sentAndRead_areTheSame) {
    const OpenMenu menu{{{.isSeparator = false, .isEnabled = false, .title = "Vantrel", .keyEquivalent = ""},
                         {.isSeparator = true, .isEnabled = false, .title = "", .keyEquivalent = ""},
                         {.isSeparator = false, .isEnabled = true, .title = "Settings...", .keyEquivalent = ","}}};
    const UpdateMenu update{menu.rows};
    EXPECT_EQ(valueOf<OpenMenu>(messageOf(menu)), menu);
    EXPECT_EQ(valueOf<UpdateMenu>(messageOf(update)), update);
    EXPECT_EQ(valueOf<OpenMenu>(messageOf(OpenMenu())), OpenMenu());
    EXPECT_FALSE(valueOf<OpenMenu>(messageOf(update)));
    EXPECT_FALSE(valueOf<UpdateMenu>(messageOf(menu)));
}

TEST(ScreenMessages, chosenRow_sentAndRead_isTheSame) {
    EXPECT_EQ(valueOf<ChosenRow>(messageOf(ChosenRow{11})), ChosenRow{11});
    EXPECT_FALSE(valueOf<ChosenRow>(Message(screen_messages::menuClosed)));
}

}  // namespace
}  // namespace vantrel
