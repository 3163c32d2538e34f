#include "helpers/messages/OverlayMessage.hpp"

#include <gtest/gtest.h>

namespace vantrel::desktop {
namespace {

using Kind = OverlayMessage::Kind;

TEST(OverlayMessage, packet_everyKind_comesBackAsItWas) {
    for (const Kind kind :
         {Kind::showText, Kind::hideText, Kind::openMenu, Kind::updateMenu, Kind::rowChosen, Kind::menuClosed}) {
        for (const std::vector<std::string>& fields :
             {std::vector<std::string>{}, {"Büro"}, {"", "12", ""}, {std::string(10000, 'x'), "\n"}}) {
            const OverlayMessage message{.kind = kind, .fields = fields};
            EXPECT_EQ(decodedPacket(encodedPacket(message)), message);
        }
    }
}

TEST(OverlayMessage, packet_notAMessage_isRefused) {
    EXPECT_FALSE(decodedPacket(""));
    EXPECT_FALSE(decodedPacket("X"));
    EXPECT_FALSE(decodedPacket("Tunfinished"));
}

TEST(OverlayMessage, rows_throughFields_comeBackAsTheyWere) {
    const std::vector<OverlayRow> rows{
        {.isSeparator = false, .isEnabled = false, .title = "Vantrel", .keyEquivalent = ""},
        {.isSeparator = true, .isEnabled = false, .title = "", .keyEquivalent = ""},
        {.isSeparator = false, .isEnabled = true, .title = "Settings...", .keyEquivalent = ","}};
    EXPECT_EQ(rowsFromFields(rowFields(rows)), rows);
    EXPECT_TRUE(rowsFromFields({}).empty());
}

TEST(OverlayMessage, rows_unfinishedOne_isLeftOut) {
    EXPECT_EQ(rowsFromFields({"e", "Quit Vantrel", "q", "e", "half"}).size(), 1U);
}

}  // namespace
}  // namespace vantrel::desktop
