// A store that could not be read at launch and can be read later: what it holds meets what this run did.
#include <limits>

#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

using namespace std::string_literals;
using Values = UserDefaults::Values;

constexpr const char* storedPoints =
    R"([{"id":"00000000-0000-0000-0000-0000000000A1","name":"A","point":{"x":1,"y":2}},)"
    R"({"id":"00000000-0000-0000-0000-0000000000A2","name":"B","point":{"x":3,"y":4}}])";

class LateReadingTest : public ControllerTest {
  protected:
    LateReadingTest() { launch(); }

    /// Saves that many points, as fast as a person may.
    void savePoints(int count) {
        for (int number = 0; number < count; ++number) {
            controller->saveCurrentPoint();
        }
        fakes.journal.clear();
    }

    /// The names of the points in the store, read as a launch reads them.
    [[nodiscard]] std::vector<std::string> storedNames() {
        std::vector<std::string> names;
        for (const SavedPoint& point : storedSavedPoints()) {
            names.push_back(point.name);
        }
        return names;
    }

    /// The keys under which something was set aside.
    [[nodiscard]] std::vector<std::string> keysAside() const {
        std::vector<std::string> keys;
        for (const auto& [key, value] : fakes.defaults.values) {
            if (key.find(".unreadable-") != std::string::npos) {
                keys.push_back(key);
            }
        }
        return keys;
    }
};

using LateReadingDeathTest = LateReadingTest;

TEST_F(LateReadingTest, savedPoints_noneSavedSince_areTakenAsAtLaunch) {
    fakes.defaults.readLate({{"savedPoints", DefaultsData{storedPoints}}});
    EXPECT_TRUE(calls({"setObjects"}).empty()) << "there is nothing to write";
    EXPECT_EQ(jumpToSavedPoints(3), (std::vector<std::string>{"A", "B", "A"}));
}

TEST_F(LateReadingTest, savedPoints_someSavedSince_comeFirstAndTheCycleGoesOnAtTheSamePoint) {
    savePoints(3);
    ASSERT_EQ(jumpToSavedPoints(2), (std::vector<std::string>{"Point 3", "Point 1"}));
    fakes.defaults.readLate({{"savedPoints", DefaultsData{storedPoints}}});
    EXPECT_EQ(storedNames(), (std::vector<std::string>{"A", "B", "Point 1", "Point 2", "Point 3"}));
    EXPECT_EQ(jumpToSavedPoints(6), (std::vector<std::string>{"Point 2", "Point 3", "A", "B", "Point 1", "Point 2"}));
}

TEST_F(LateReadingTest, savedPoints_oneOfThemInBoth_isThereOnce) {
    savePoints(1);
    const std::string own = storedData("savedPoints");
    savePoints(1);
    fakes.defaults.readLate({{"savedPoints", DefaultsData{own}}});
    EXPECT_EQ(jumpToSavedPoints(3), (std::vector<std::string>{"Point 2", "Point 1", "Point 2"}));
}

TEST_F(LateReadingTest, savedPoints_clearedSince_areClearedToo) {
    savePoints(1);
    controller->clearSavedPoints();
    fakes.defaults.readLate({{"savedPoints", DefaultsData{storedPoints}}});
    EXPECT_EQ(storedData("savedPoints"), "[]");
    EXPECT_EQ(jumpToSavedPoints(1), std::vector<std::string>{"No points"});
}

TEST_F(LateReadingTest, savedPoints_clearedInTheWindowAndSavedSince_onlyTheLatterRemain) {
    controller->preferencesDidClearSavedPoints();
    savePoints(1);
    fakes.defaults.readLate({{"savedPoints", DefaultsData{storedPoints}}});
    EXPECT_EQ(storedNames(), std::vector<std::string>{"Point 1"});
    EXPECT_EQ(jumpToSavedPoints(2), (std::vector<std::string>{"Point 1", "Point 1"}));
}

TEST_F(LateReadingTest, savedPoints_cannotBeUnderstood_areSetAsideAndThoseOfThisRunStay) {
    for (const DefaultsValue& value : {DefaultsValue(DefaultsData{"[{"}), DefaultsValue("text"s)}) {
        const auto asideBefore = keysAside();
        savePoints(1);
        const auto stored = storedNames();
        const auto line = savedPointsLine();
        testing::internal::CaptureStderr();
        fakes.defaults.readLate({{"savedPoints", value}});
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_EQ(storedNames(), stored);
        EXPECT_EQ(savedPointsLine(), line);
        EXPECT_EQ(jumpToSavedPoints(1), std::vector<std::string>{stored.back()});
        const auto aside = keysAside();
        ASSERT_EQ(aside.size(), asideBefore.size() + 1);
        EXPECT_TRUE(aside.back().starts_with("savedPoints.unreadable-"));
        EXPECT_EQ(fakes.defaults.values.find(aside.back())->second, value);
        EXPECT_EQ(told, "vantrel: the stored value of savedPoints cannot be understood; it is kept as " + aside.back() +
                            "\n");
    }
}

TEST_F(LateReadingTest, savedPoints_ownWithoutJSONForm_storedOnesAreNotOverwritten) {
    fakes.pointer.location.x = std::numeric_limits<double>::quiet_NaN();
    savePoints(1);
    fakes.defaults.readLate({{"savedPoints", DefaultsData{storedPoints}}});
    EXPECT_EQ(storedData("savedPoints"), storedPoints);
    EXPECT_EQ(jumpToSavedPoints(4), (std::vector<std::string>{"Point 1", "A", "B", "Point 1"}));
}

TEST_F(LateReadingTest, rememberedPositions_nothingLearnt_areTakenAsAtLaunch) {
    fakes.defaults.readLate({{"rememberedPositions", DefaultsData{R"({"7":{"x":1,"y":2}})"}}});
    EXPECT_TRUE(calls({"setObjects"}).empty());
    layOutTwoDisplays();
    fakes.pointer.location = {700, 500};
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(storedPositions(), (Positions{{"1", {700, 500}}, {"7", {1, 2}}}));
}

TEST_F(LateReadingTest, rememberedPositions_someLearnt_thoseWin) {
    layOutTwoDisplays();
    fakes.pointer.location = {700, 500};
    controller->teleportDisplay(TeleportDirection::next);
    fakes.defaults.readLate(
        {{"rememberedPositions", DefaultsData{R"({"1":{"x":1,"y":2},"2":{"x":-700,"y":300},"7":{"x":5,"y":6}})"}}});
    const Positions joined{{"1", {700, 500}}, {"2", {-700, 300}}, {"7", {5, 6}}};
    EXPECT_EQ(storedPositions(), joined);
    controller->preferencesDidChangeAnimation(AnimationStyle::none);
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-700, 300}));
    EXPECT_EQ(storedPositions(), joined);
    fakes.pointer.location = {700, 500};
    relaunch();
    controller->teleportDisplay(TeleportDirection::next);
    EXPECT_EQ(fakes.pointer.location, (CGPoint{-700, 300})) << storedData("rememberedPositions");
}

TEST_F(LateReadingTest, rememberedPositions_cannotBeUnderstood_areSetAside) {
    layOutTwoDisplays();
    fakes.pointer.location = {1, 2};
    controller->teleportDisplay(TeleportDirection::next);
    testing::internal::CaptureStderr();
    fakes.defaults.readLate({{"rememberedPositions", DefaultsData{R"({"1":{"x":1}})"}}});
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(storedData("rememberedPositions"), R"({"1":{"x":1,"y":2}})");
    ASSERT_EQ(keysAside().size(), 1U);
    EXPECT_EQ(storedData(keysAside().front()), R"({"1":{"x":1}})");
}

TEST_F(LateReadingDeathTest, rememberedPositions_twoSpellingsOfOneDisplay_stopTheProgram) {
    EXPECT_DEATH(
        fakes.defaults.readLate({{"rememberedPositions", DefaultsData{R"({"7":{"x":1,"y":1},"07":{"x":2,"y":2}})"}}}),
        "Duplicate values for key: '7'");
}

TEST_F(LateReadingTest, singleValues_notChangedSince_comeIntoForce) {
    fakes.defaults.readLate({{"mode", "manual"s}, {"animation", "none"s}, {"soundEnabled", std::int64_t{0}}});
    EXPECT_TRUE(calls({"setObjects"}).empty());
    auto& window = openSettings();
    EXPECT_EQ(window.content.selectedMode, 1) << "manual";
    EXPECT_EQ(window.content.selectedAnimation, 0) << "none";
    EXPECT_FALSE(window.content.isSoundChecked);
}

TEST_F(LateReadingTest, singleValues_changedSince_stayAsChanged) {
    controller->preferencesDidChangeMode(VantrelMode::automatic);
    controller->preferencesDidChangeSound(true);
    fakes.defaults.readLate({{"mode", "manual"s}, {"animation", "none"s}, {"soundEnabled", std::int64_t{0}}});
    auto& window = openSettings();
    EXPECT_EQ(window.content.selectedMode, 0) << "automatic";
    EXPECT_EQ(window.content.selectedAnimation, 0) << "none";
    EXPECT_TRUE(window.content.isSoundChecked);
}

TEST_F(LateReadingTest, shortcut_notChangedSince_isRegisteredAsAtLaunch) {
    fakes.defaults.readLate(
        {{"primaryHotKeyCode", std::int64_t{40}}, {"primaryHotKeyModifiers", std::int64_t{0x1900}}});
    EXPECT_EQ(calls({"UnregisterEventHotKey", "RegisterEventHotKey", "setObjects"}),
              (fake::Journal{"UnregisterEventHotKey(id 1)", "RegisterEventHotKey(40, 6400, id 1)"}));
    EXPECT_EQ(shortcutLine(), "Shortcut: Ctrl + Option + Command + K");
    EXPECT_EQ(openSettings().content.shortcutStatus, "Ready. Use Ctrl + Option + Command + K.");
}

TEST_F(LateReadingTest, shortcut_takenOrReserved_isToldAsAtLaunch) {
    fakes.hotKeys.refusals[{40, 0x1900}] = eventHotKeyExistsErr;
    fakes.defaults.readLate(
        {{"primaryHotKeyCode", std::int64_t{40}}, {"primaryHotKeyModifiers", std::int64_t{0x1900}}});
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Ctrl + Option + Command + K");
    EXPECT_EQ(openSettings().content.shortcutStatus,
              "Ctrl + Option + Command + K is unavailable right now. macOS returned -9878.");
    fakes.defaults.values.clear();
    fakes.defaults.readLate(
        {{"primaryHotKeyCode", std::int64_t{18}}, {"primaryHotKeyModifiers", std::int64_t{0x1B00}}});
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + 1");
    EXPECT_EQ(openSettings().content.shortcutStatus, "Hyper + 1 is reserved in Raycast. Choose a different Hyper key.");
}

TEST_F(LateReadingTest, shortcut_changedSince_staysRegistered) {
    controller->applyPrimaryShortcut({37, 0x1900});
    fakes.journal.clear();
    fakes.defaults.readLate(
        {{"primaryHotKeyCode", std::int64_t{40}}, {"primaryHotKeyModifiers", std::int64_t{0x1900}}});
    EXPECT_EQ(shortcutLine(), "Shortcut: Ctrl + Option + Command + L");
    EXPECT_TRUE(calls({"UnregisterEventHotKey", "RegisterEventHotKey"}).empty());
}

TEST_F(LateReadingTest, shortcut_sameAsInForce_isNotRegisteredAnew) {
    fakes.defaults.readLate({{"primaryHotKeyCode", std::int64_t{2}}, {"primaryHotKeyModifiers", std::int64_t{0x1B00}}});
    EXPECT_TRUE(calls({"UnregisterEventHotKey", "RegisterEventHotKey"}).empty());
}

TEST_F(LateReadingTest, menuAndWindow_follow) {
    controller->openSettings();
    fakes.journal.clear();
    fakes.defaults.readLate({{"mode", "manual"s},
                             {"savedPoints", DefaultsData{storedPoints}},
                             {"primaryHotKeyCode", std::int64_t{40}},
                             {"primaryHotKeyModifiers", std::int64_t{0x1900}}});
    EXPECT_NE(fakes.statusBar.row("Mode: Manual: saved points"), nullptr);
    EXPECT_NE(fakes.statusBar.row("Saved Points: 2 points"), nullptr);
    EXPECT_NE(fakes.statusBar.row("Shortcut: Ctrl + Option + Command + K"), nullptr);
    EXPECT_EQ(fakes.preferencesWindowViews.view->content.savedPointsSummary, "2 saved cursor points.");
    EXPECT_TRUE(calls({"setTitle"}).empty()) << "no message for what a person did not ask for";
}

TEST_F(LateReadingTest, emptyStore_changesNothing) {
    savePoints(1);
    fakes.defaults.readLate({});
    EXPECT_TRUE(calls({"setObjects"}).empty());
    EXPECT_EQ(jumpToSavedPoints(2), (std::vector<std::string>{"Point 1", "Point 1"}));
}

TEST_F(LateReadingTest, controllerGone_nobodyTakesItIn) {
    EXPECT_TRUE(fakes.defaults.hasLateReadHandler());
    controller = nullptr;
    EXPECT_FALSE(fakes.defaults.hasLateReadHandler());
}

}  // namespace
}  // namespace vantrel
