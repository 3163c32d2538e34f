#include "Vantrel/Desktop/StatusItem/PanelLabel.hpp"

#include <gtest/gtest.h>

namespace vantrel::desktop {
namespace {

std::string repeated(const std::string& text, int count) {
    std::string result;
    for (int index = 0; index < count; ++index) {
        result += text;
    }
    return result;
}

TEST(PanelLabel, panelLabel_shortTitle_isItself) {
    for (const std::string title : {"", "Vantrel", "Büro 東京 🖥", "100 %_&"}) {
        EXPECT_EQ(panelLabel(title), title);
    }
}

TEST(PanelLabel, panelLabel_atTheWidest_isItself) {
    for (const std::string& title : {repeated("n", 48), repeated("東", 24), repeated("e\u0301", 48)}) {
        EXPECT_EQ(panelLabel(title), title);
    }
}

TEST(PanelLabel, panelLabel_longer_endsWithAnEllipsisBetweenCharacters) {
    EXPECT_EQ(panelLabel(repeated("n", 49)), repeated("n", 47) + "…");
    EXPECT_EQ(panelLabel(repeated("東", 25)), repeated("東", 23) + "…");
    EXPECT_EQ(panelLabel(repeated("e\u0301", 49)), repeated("e\u0301", 47) + "…");
    EXPECT_EQ(panelLabel(repeated("n", 1000000)), repeated("n", 47) + "…");
}

TEST(PanelLabel, panelLabel_severalLines_areOne) {
    EXPECT_EQ(panelLabel("on\nthe\tdesk"), "on the desk");
    EXPECT_EQ(panelLabel(repeated("n", 40) + "\n" + repeated("n", 20)),
              repeated("n", 40) + " " + repeated("n", 6) + "…");
}

}  // namespace
}  // namespace vantrel::desktop
