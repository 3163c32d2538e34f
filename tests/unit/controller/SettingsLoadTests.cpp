#include <ostream>

#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {

std::ostream& operator<<(std::ostream& stream, const DefaultsValue& value) {
    if (const auto* const text = std::get_if<std::string>(&value)) {
        return stream << "text " << *text;
    }
    if (const auto* const data = std::get_if<DefaultsData>(&value)) {
        return stream << "data " << data->bytes;
    }
    if (const auto* const boolean = std::get_if<bool>(&value)) {
        return stream << "boolean " << *boolean;
    }
    if (const auto* const integer = std::get_if<std::int64_t>(&value)) {
        return stream << "integer " << *integer;
    }
    return stream << "real " << std::get<double>(value);
}

namespace {

using namespace std::string_literals;

class SettingsLoadTest : public ControllerTest {
  protected:
    /// The positions that the launch took in. A jump stores them all beside that of the display which it leaves.
    Positions loadedPositions() {
        constexpr CGDirectDisplayID ours = 4242;
        fakes.displays.layout = {{ours, CGRect{{0, 0}, {1000, 800}}}};
        controller->teleportNextDisplay();
        Positions positions = storedPositions();
        EXPECT_EQ(positions.erase(std::to_string(ours)), 1U);
        return positions;
    }
};

using SettingsLoadDeathTest = SettingsLoadTest;

TEST_F(SettingsLoadTest, launch_modeStored_takesExactRawStringsOnly) {
    const std::vector<std::pair<DefaultsValue, VantrelMode>> cases{
        {"manual"s, VantrelMode::manual},     {"automatic"s, VantrelMode::automatic},
        {"Manual"s, VantrelMode::automatic},  {"MANUAL"s, VantrelMode::automatic},
        {"manual "s, VantrelMode::automatic}, {""s, VantrelMode::automatic},
        {"glide"s, VantrelMode::automatic},   {std::int64_t{1}, VantrelMode::automatic},
        {true, VantrelMode::automatic},       {DefaultsData{"manual"}, VantrelMode::automatic}};
    for (const auto& [stored, expected] : cases) {
        store("mode", stored);
        relaunch();
        EXPECT_EQ(modeLine(), "Mode: " + std::string(title(expected))) << stored;
    }
}

TEST_F(SettingsLoadTest, launch_animationStored_takesExactRawStringsOnly) {
    fakes.displays.layout = {{1, CGRect{{0, 0}, {1000, 800}}}};
    const std::vector<std::pair<DefaultsValue, AnimationStyle>> cases{
        {"none"s, AnimationStyle::none},  {"glide"s, AnimationStyle::glide},
        {"None"s, AnimationStyle::glide}, {"instant"s, AnimationStyle::glide},
        {false, AnimationStyle::glide},   {DefaultsData{"none"}, AnimationStyle::glide}};
    for (const auto& [stored, expected] : cases) {
        store("animation", stored);
        relaunch();
        controller->teleportNextDisplay();
        EXPECT_EQ(fakes.mainQueue.runningTimers(), expected == AnimationStyle::glide ? 1U : 0U) << stored;
    }
}

TEST_F(SettingsLoadTest, launch_animationUnderTheFieldsName_isNotRead) {
    store("animationStyle", "none"s);
    launch();
    EXPECT_EQ(openSettings().content.selectedAnimation, 1) << "glide";
}

TEST_F(SettingsLoadTest, launch_soundStored_convertsAsTheStoreDoes) {
    const std::vector<std::pair<DefaultsValue, bool>> cases{{false, false},
                                                            {true, true},
                                                            {std::int64_t{0}, false},
                                                            {std::int64_t{1}, true},
                                                            {0.0, false},
                                                            {0.5, true},
                                                            {"YES"s, true},
                                                            {"true"s, true},
                                                            {"1"s, true},
                                                            {"NO"s, false},
                                                            {"false"s, false},
                                                            {""s, false},
                                                            {DefaultsData{"1"}, false}};
    for (const auto& [stored, expected] : cases) {
        store("soundEnabled", stored);
        relaunch();
        controller->saveCurrentPoint();
        EXPECT_EQ(calls({"play"}).size(), expected ? 1U : 0U) << stored;
    }
}

TEST_F(SettingsLoadTest, launch_shortcutStored_isTakenWhenWholeAndWithModifiers) {
    struct Case {
        std::optional<DefaultsValue> code;
        std::optional<DefaultsValue> modifiers;
        KeyboardShortcut expected;
    };
    constexpr KeyboardShortcut builtIn{2, 6912};
    const std::vector<Case> cases{
        {std::int64_t{40}, std::int64_t{6400}, {40, 6400}},
        {std::int64_t{0}, std::int64_t{256}, {0, 256}},
        {std::int64_t{4294967295}, std::int64_t{4294967295}, {4294967295, 4294967295}},
        {"40"s, "6400"s, {40, 6400}},
        {40.9, 6400.0, {40, 6400}},
        {std::int64_t{40}, std::nullopt, builtIn},
        {std::nullopt, std::int64_t{6400}, builtIn},
        {std::int64_t{40}, std::int64_t{0}, builtIn},
        {std::int64_t{40}, "none"s, builtIn},
        {std::int64_t{40}, DefaultsData{"6400"}, builtIn},
    };
    for (const Case& row : cases) {
        fakes.defaults.values.clear();
        if (row.code) {
            store("primaryHotKeyCode", *row.code);
        }
        if (row.modifiers) {
            store("primaryHotKeyModifiers", *row.modifiers);
        }
        endAndStartAgain();
        controller->applicationDidFinishLaunching();
        EXPECT_EQ(calls({"RegisterEventHotKey"}).at(0), "RegisterEventHotKey(" + std::to_string(row.expected.keyCode) +
                                                            ", " + std::to_string(row.expected.modifiers) + ", id 1)");
    }
}

TEST_F(SettingsLoadTest, launch_shortcutStored_isReadInOrder) {
    store("soundEnabled", true);
    store("primaryHotKeyCode", std::int64_t{40});
    store("primaryHotKeyModifiers", std::int64_t{6400});
    controller->applicationDidFinishLaunching();
    EXPECT_EQ(calls({"stringForKey", "objectForKey", "boolForKey", "integerForKey", "dataForKey"}),
              (fake::Journal{"stringForKey(mode)", "stringForKey(animation)", "objectForKey(soundEnabled)",
                             "boolForKey(soundEnabled)", "objectForKey(primaryHotKeyCode)",
                             "objectForKey(primaryHotKeyModifiers)", "integerForKey(primaryHotKeyCode)",
                             "integerForKey(primaryHotKeyModifiers)", "dataForKey(savedPoints)",
                             "dataForKey(rememberedPositions)"}));
}

TEST_F(SettingsLoadDeathTest, launch_keyCodeOutOfRange_stopsTheProgram) {
    store("primaryHotKeyModifiers", std::int64_t{6912});
    const std::vector<std::pair<DefaultsValue, std::string>> cases{{std::int64_t{-1}, "-1"},
                                                                   {std::int64_t{4294967296}, "4294967296"},
                                                                   {1e300, "9223372036854775807"},
                                                                   {"-5"s, "-5"}};
    for (const auto& [stored, text] : cases) {
        store("primaryHotKeyCode", stored);
        EXPECT_DEATH(controller->applicationDidFinishLaunching(),
                     "vantrel: Fatal error: The stored value " + text +
                         " of 'primaryHotKeyCode' is not an unsigned 32-bit number");
    }
}

TEST_F(SettingsLoadDeathTest, launch_modifiersOutOfRange_stopsTheProgram) {
    store("primaryHotKeyCode", std::int64_t{2});
    for (const std::int64_t stored : {std::int64_t{-1}, std::int64_t{4294967296}}) {
        store("primaryHotKeyModifiers", stored);
        EXPECT_DEATH(controller->applicationDidFinishLaunching(),
                     "The stored value " + std::to_string(stored) +
                         " of 'primaryHotKeyModifiers' is not an unsigned 32-bit number");
    }
}

TEST_F(SettingsLoadTest, launch_keyCodeOutOfRangeWithoutModifiers_isNotRead) {
    store("primaryHotKeyCode", std::int64_t{-1});
    launch();
    EXPECT_EQ(shortcutLine(), "Shortcut: Hyper + D");
}

TEST_F(SettingsLoadTest, launch_savedPointsStored_areTakenInOrder) {
    store("savedPoints", DefaultsData{R"([
        {"id":"00000000-0000-0000-0000-00000000000A","name":"Desk","point":{"x":1.5,"y":-2},"displayID":7},
        {"id":"00000000-0000-0000-0000-00000000000b","name":"Point 2","point":{"x":3,"y":4}}])"});
    store("animation", "none"s);
    launch();
    EXPECT_EQ(jumpToSavedPoints(3), (std::vector<std::string>{"Desk", "Point 2", "Desk"}));
    EXPECT_EQ(fakes.pointer.warps, (std::vector<CGPoint>{{1.5, -2}, {3, 4}, {1.5, -2}}));
    controller->saveCurrentPoint();
    const std::vector<SavedPoint> points = storedSavedPoints();
    ASSERT_EQ(points.size(), 3U);
    EXPECT_EQ(points[0].displayID, 7U);
    EXPECT_EQ(points[1].displayID, std::nullopt);
}

TEST_F(SettingsLoadTest, launch_savedPointsDamaged_staysEmptyAndKeepsTheBytesUntilTheNextSave) {
    for (const char* const bytes : {"", "[", "{}", "null", R"([{"name":"Point 1","point":{"x":1,"y":2}}])", "\xFF"}) {
        store("savedPoints", DefaultsData{bytes});
        relaunch();
        EXPECT_EQ(savedPointsLine(), "Saved Points: none") << bytes;
        EXPECT_EQ(storedData("savedPoints"), bytes);
    }
    controller->saveCurrentPoint();
    EXPECT_EQ(storedData("savedPoints"),
              R"([{"id":"00000000-0000-0000-0000-000000000001","name":"Point 1","point":{"x":0,"y":0}}])");
}

TEST_F(SettingsLoadTest, launch_savedPointsAsText_isNotData) {
    store("savedPoints", R"([{"id":"00000000-0000-0000-0000-00000000000A","name":"A","point":{"x":1,"y":2}}])"s);
    launch();
    EXPECT_EQ(savedPointsLine(), "Saved Points: none");
}

TEST_F(SettingsLoadTest, launch_positionsStored_keepsThoseOfDisplays) {
    store("rememberedPositions", DefaultsData{R"({"1":{"x":10,"y":20},"5":{"x":5.5,"y":-3}})"});
    launch();
    EXPECT_EQ(loadedPositions(), (Positions{{"1", {10, 20}}, {"5", {5.5, -3}}}));
}

TEST_F(SettingsLoadTest, launch_positionNames_parseByTheRulesForNumbers) {
    const std::vector<std::pair<std::string, std::optional<std::uint32_t>>> cases{
        {"0", 0},
        {"7", 7},
        {"+7", 7},
        {"007", 7},
        {"+0", 0},
        {"-0", 0},
        {"-000", 0},
        {"4294967295", 4294967295U},
        {"000000000000000000000000000000004294967295", 4294967295U},
        {"4294967296", std::nullopt},
        {"18446744073709551617", std::nullopt},
        {"99999999999999999999999999999999999999", std::nullopt},
        {"-1", std::nullopt},
        {"-", std::nullopt},
        {"+", std::nullopt},
        {"+-1", std::nullopt},
        {"--0", std::nullopt},
        {"", std::nullopt},
        {"abc", std::nullopt},
        {"7a", std::nullopt},
        {" 7", std::nullopt},
        {"7 ", std::nullopt},
        {"7.0", std::nullopt},
        {"1e3", std::nullopt},
        {"0x7", std::nullopt},
        {"\u0667", std::nullopt},  // an Arabic seven: a digit, but not an ASCII one
    };
    for (const auto& [name, expected] : cases) {
        store("rememberedPositions", DefaultsData{R"({")" + name + R"(":{"x":1,"y":2}})"});
        relaunch();
        Positions positions;
        if (expected) {
            positions.emplace(std::to_string(*expected), VantrelPoint(1, 2));
        }
        EXPECT_EQ(loadedPositions(), positions) << '"' << name << '"';
    }
}

TEST_F(SettingsLoadTest, launch_positionsWithUnusableNames_keepsTheRest) {
    store("rememberedPositions",
          DefaultsData{R"({"abc":{"x":1,"y":1},"":{"x":2,"y":2},"5":{"x":3,"y":3},"4294967296":{"x":4,"y":4}})"});
    launch();
    EXPECT_EQ(loadedPositions(), (Positions{{"5", {3, 3}}}));
}

TEST_F(SettingsLoadTest, launch_positionsDamaged_stayEmpty) {
    for (const char* const bytes : {"", "[]", "null", R"({"1":{"x":1}})", R"({"1":{"x":1,"y":2},"abc":3})"}) {
        store("rememberedPositions", DefaultsData{bytes});
        relaunch();
        EXPECT_EQ(loadedPositions(), Positions()) << bytes;
    }
}

TEST_F(SettingsLoadTest, launch_sameMemberTwice_takesTheLast) {
    store("rememberedPositions", DefaultsData{R"({"7":{"x":1,"y":1},"7":{"x":2,"y":2}})"});
    launch();
    EXPECT_EQ(loadedPositions(), (Positions{{"7", {2, 2}}}));
}

TEST_F(SettingsLoadDeathTest, launch_twoSpellingsOfOneDisplay_stopsTheProgram) {
    const std::vector<std::pair<std::string, std::string>> cases{{R"("7":{"x":1,"y":1},"07":{"x":2,"y":2})", "7"},
                                                                 {R"("+7":{"x":1,"y":1},"7":{"x":1,"y":1})", "7"},
                                                                 {R"("5":{"x":1,"y":1},"05":{"x":2,"y":2})", "5"},
                                                                 {R"("0":{"x":1,"y":1},"-0":{"x":2,"y":2})", "0"}};
    for (const auto& [members, key] : cases) {
        store("rememberedPositions", DefaultsData{"{" + members + "}"});
        EXPECT_DEATH(controller->applicationDidFinishLaunching(),
                     "vantrel: Fatal error: Duplicate values for key: '" + key + "'");
    }
}

}  // namespace
}  // namespace vantrel
