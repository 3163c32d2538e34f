#include "Vantrel/Interface/StatusMenu.hpp"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace vantrel {
namespace {

struct ExpectedRow {
    std::string title;
    bool isEnabled;
    bool isSeparator = false;
    std::string keyEquivalent = "";
};

struct Case {
    std::string name;
    StatusMenuState state;
    std::string shortcut;
    std::string mode;
    std::string points;
};

std::vector<ExpectedRow> expectedRows(const Case& given) {
    const bool hasPoints = given.state.savedPointCount > 0;
    const ExpectedRow separator{"", false, true};
    return {{"Vantrel", false},
            separator,
            {"Teleport Now", true},
            {"Next Display", true},
            {"Previous Display", true},
            separator,
            {"Save Current Point", true},
            {"Teleport Saved Point", hasPoints},
            {"Clear Saved Points", hasPoints},
            separator,
            {"Settings...", true, false, ","},
            {given.shortcut, false},
            {given.mode, false},
            {given.points, false},
            separator,
            {"Quit Vantrel", true, false, "q"}};
}

class StatusMenuStates : public testing::TestWithParam<Case> {};

TEST_P(StatusMenuStates, makeStatusMenu_stateGiven_givesSixteenRows) {
    const Menu menu = makeStatusMenu(GetParam().state, {});
    const auto expected = expectedRows(GetParam());
    ASSERT_EQ(menu.size(), 16U);
    for (std::size_t row = 0; row < menu.size(); ++row) {
        SCOPED_TRACE("row " + std::to_string(row + 1));
        EXPECT_EQ(menu[row].title, expected[row].title);
        EXPECT_EQ(menu[row].isSeparator, expected[row].isSeparator);
        EXPECT_EQ(menu[row].isEnabled, expected[row].isEnabled);
        EXPECT_EQ(menu[row].keyEquivalent, expected[row].keyEquivalent);
        EXPECT_TRUE(std::holds_alternative<std::monostate>(menu[row].representedObject));
    }
}

constexpr KeyboardShortcut hyperD{};
constexpr KeyboardShortcut controlOptionCommandRight{124, 0x1900};

INSTANTIATE_TEST_SUITE_P(States, StatusMenuStates,
                         testing::Values(Case{"AutomaticRegisteredNoPoints",
                                              {0, VantrelMode::automatic, hyperD, true},
                                              "Shortcut: Hyper + D",
                                              "Mode: Automatic: displays",
                                              "Saved Points: none"},
                                         Case{"ManualRegisteredOnePoint",
                                              {1, VantrelMode::manual, hyperD, true},
                                              "Shortcut: Hyper + D",
                                              "Mode: Manual: saved points",
                                              "Saved Points: 1 point"},
                                         Case{"AutomaticUnavailableTwelvePoints",
                                              {12, VantrelMode::automatic, controlOptionCommandRight, false},
                                              "Shortcut unavailable: Ctrl + Option + Command + Right Arrow",
                                              "Mode: Automatic: displays",
                                              "Saved Points: 12 points"},
                                         Case{"ManualUnavailableManyPoints",
                                              {1234567, VantrelMode::manual, KeyboardShortcut{115, 0}, false},
                                              "Shortcut unavailable: Key 115",
                                              "Mode: Manual: saved points",
                                              "Saved Points: 1234567 points"},
                                         Case{"AutomaticRegisteredTwoPoints",
                                              {2, VantrelMode::automatic, KeyboardShortcut{49, 0x300}, true},
                                              "Shortcut: Shift + Command + Space",
                                              "Mode: Automatic: displays",
                                              "Saved Points: 2 points"}),
                         [](const auto& given) { return given.param.name; });

TEST(StatusMenu, makeStatusMenu_rowsChosen_callTheirOwnAction) {
    std::string called;
    const auto note = [&called](const char* name) { return [&called, name] { called = name; }; };
    const Menu menu = makeStatusMenu({}, {.teleportPrimary = note("teleportPrimary"),
                                          .teleportNextDisplay = note("teleportNextDisplay"),
                                          .teleportPreviousDisplay = note("teleportPreviousDisplay"),
                                          .saveCurrentPoint = note("saveCurrentPoint"),
                                          .teleportSavedPoint = note("teleportSavedPoint"),
                                          .clearSavedPoints = note("clearSavedPoints"),
                                          .openSettings = note("openSettings"),
                                          .quit = note("quit")});
    const std::array<std::string, 16> expected{"",
                                               "",
                                               "teleportPrimary",
                                               "teleportNextDisplay",
                                               "teleportPreviousDisplay",
                                               "",
                                               "saveCurrentPoint",
                                               "teleportSavedPoint",
                                               "clearSavedPoints",
                                               "",
                                               "openSettings",
                                               "",
                                               "",
                                               "",
                                               "",
                                               "quit"};
    ASSERT_EQ(menu.size(), expected.size());
    for (std::size_t row = 0; row < menu.size(); ++row) {
        SCOPED_TRACE("row " + std::to_string(row + 1));
        called.clear();
        if (menu[row].action) {
            menu[row].action();
        }
        EXPECT_EQ(called, expected.at(row));
    }
}

}  // namespace
}  // namespace vantrel
