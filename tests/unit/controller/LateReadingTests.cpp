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

    static std::vector<std::string> namesOf(const std::vector<SavedPoint>& points) {
        std::vector<std::string> result;
        for (const SavedPoint& point : points) {
            result.push_back(point.name);
        }
        return result;
    }

    [[nodiscard]] std::vector<std::string> names() const { return namesOf(fields.savedPoints()); }

    /// The names of the points in the store, read as a launch reads them.
    [[nodiscard]] std::vector<std::string> storedNames() {
        return namesOf(JSONDecoder().decodeSavedPoints(storedData("savedPoints")).value());
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
    EXPECT_EQ(names(), (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(fields.savedPointIndex(), 0);
    EXPECT_TRUE(calls({"setObjects"}).empty()) << "there is nothing to write";
}

TEST_F(LateReadingTest, savedPoints_someSavedSince_comeFirstAndTheCycleGoesOnAtTheSamePoint) {
    savePoints(3);
    controller->teleportSavedPoint();
    const std::string next = fields.savedPoints().at(0).name;
    ASSERT_EQ(fields.savedPointIndex(), 0);
    controller->teleportSavedPoint();
    ASSERT_EQ(fields.savedPointIndex(), 1);
    fakes.defaults.readLate({{"savedPoints", DefaultsData{storedPoints}}});
    const std::vector<std::string> joined{"A", "B", "Point 1", "Point 2", "Point 3"};
    EXPECT_EQ(names(), joined);
    EXPECT_EQ(storedNames(), joined);
    EXPECT_EQ(fields.savedPointIndex(), 3);
    controller->teleportSavedPoint();
    EXPECT_EQ(fakes.statusBar.title, "Point 2");
}

TEST_F(LateReadingTest, savedPoints_oneOfThemInBoth_isThereOnce) {
    savePoints(1);
    const std::string own = storedData("savedPoints");
    savePoints(1);
    fakes.defaults.readLate({{"savedPoints", DefaultsData{own}}});
    EXPECT_EQ(names(), (std::vector<std::string>{"Point 1", "Point 2"}));
    EXPECT_EQ(fields.savedPointIndex(), 1);
}

TEST_F(LateReadingTest, savedPoints_clearedSince_areClearedToo) {
    savePoints(1);
    controller->clearSavedPoints();
    fakes.defaults.readLate({{"savedPoints", DefaultsData{storedPoints}}});
    EXPECT_TRUE(names().empty());
    EXPECT_EQ(storedData("savedPoints"), "[]");
}

TEST_F(LateReadingTest, savedPoints_clearedInTheWindowAndSavedSince_onlyTheLatterRemain) {
    controller->preferencesDidClearSavedPoints();
    savePoints(1);
    fakes.defaults.readLate({{"savedPoints", DefaultsData{storedPoints}}});
    EXPECT_EQ(names(), std::vector<std::string>{"Point 1"});
    EXPECT_EQ(storedNames(), std::vector<std::string>{"Point 1"});
    EXPECT_EQ(fields.savedPointIndex(), 0);
}

TEST_F(LateReadingTest, savedPoints_cannotBeUnderstood_areSetAsideAndThoseOfThisRunStay) {
    for (const DefaultsValue& value : {DefaultsValue(DefaultsData{"[{"}), DefaultsValue("text"s)}) {
        const auto asideBefore = keysAside();
        savePoints(1);
        const auto before = names();
        testing::internal::CaptureStderr();
        fakes.defaults.readLate({{"savedPoints", value}});
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_EQ(names(), before);
        EXPECT_EQ(storedNames(), before);
        const auto aside = keysAside();
        ASSERT_EQ(aside.size(), asideBefore.size() + 1);
        EXPECT_TRUE(aside.back().starts_with("savedPoints.unreadable-"));
        EXPECT_EQ(fakes.defaults.values.find(aside.back())->second, value);
        EXPECT_EQ(told, "vantrel: the stored value of savedPoints cannot be understood; it is kept as " + aside.back() +
                            "\n");
    }
}

TEST_F(LateReadingTest, savedPoints_ownWithoutJSONForm_storedOnesAreNotOverwritten) {
    savePoints(1);
    fields.savedPoints().at(0).point.x = std::numeric_limits<double>::quiet_NaN();
    fakes.defaults.readLate({{"savedPoints", DefaultsData{storedPoints}}});
    EXPECT_EQ(names(), (std::vector<std::string>{"A", "B", "Point 1"}));
    EXPECT_EQ(storedData("savedPoints"), storedPoints);
}

TEST_F(LateReadingTest, rememberedPositions_nothingLearnt_areTakenAsAtLaunch) {
    fakes.defaults.readLate({{"rememberedPositions", DefaultsData{R"({"7":{"x":1,"y":2}})"}}});
    EXPECT_EQ(fields.rememberedPositions(), (RememberedPositions{{7, {1, 2}}}));
    EXPECT_TRUE(calls({"setObjects"}).empty());
}

TEST_F(LateReadingTest, rememberedPositions_someLearnt_thoseWin) {
    layOutTwoDisplays();
    fakes.pointer.location = {700, 500};
    controller->teleportDisplay(TeleportDirection::next);
    fakes.defaults.readLate(
        {{"rememberedPositions", DefaultsData{R"({"1":{"x":1,"y":2},"2":{"x":-700,"y":300},"7":{"x":5,"y":6}})"}}});
    const RememberedPositions joined{{1, {700, 500}}, {2, {-700, 300}}, {7, {5, 6}}};
    EXPECT_EQ(fields.rememberedPositions(), joined);
    fields.rememberedPositions().clear();
    controller->applicationDidFinishLaunching();
    EXPECT_EQ(fields.rememberedPositions(), joined) << storedData("rememberedPositions");
}

TEST_F(LateReadingTest, rememberedPositions_cannotBeUnderstood_areSetAside) {
    fields.rememberedPositions() = {{1, {1, 2}}};
    fields.saveRememberedPositions();
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
    EXPECT_EQ(fields.mode(), VantrelMode::manual);
    EXPECT_EQ(fields.animationStyle(), AnimationStyle::none);
    EXPECT_FALSE(fields.soundEnabled());
    EXPECT_TRUE(calls({"setObjects"}).empty());
}

TEST_F(LateReadingTest, singleValues_changedSince_stayAsChanged) {
    controller->preferencesDidChangeMode(VantrelMode::automatic);
    controller->preferencesDidChangeSound(true);
    fakes.defaults.readLate({{"mode", "manual"s}, {"animation", "none"s}, {"soundEnabled", std::int64_t{0}}});
    EXPECT_EQ(fields.mode(), VantrelMode::automatic);
    EXPECT_EQ(fields.animationStyle(), AnimationStyle::none);
    EXPECT_TRUE(fields.soundEnabled());
}

TEST_F(LateReadingTest, shortcut_notChangedSince_isRegisteredAsAtLaunch) {
    fakes.defaults.readLate(
        {{"primaryHotKeyCode", std::int64_t{40}}, {"primaryHotKeyModifiers", std::int64_t{0x1900}}});
    EXPECT_EQ(calls({"UnregisterEventHotKey", "RegisterEventHotKey", "setObjects"}),
              (fake::Journal{"UnregisterEventHotKey(id 1)", "RegisterEventHotKey(40, 6400, id 1)"}));
    EXPECT_EQ(fields.primaryShortcut(), (KeyboardShortcut{40, 0x1900}));
    EXPECT_TRUE(fields.primaryShortcutIsRegistered());
    EXPECT_EQ(fields.primaryShortcutStatusText(), "Ready. Use Ctrl + Option + Command + K.");
}

TEST_F(LateReadingTest, shortcut_takenOrReserved_isToldAsAtLaunch) {
    fakes.hotKeys.refusals[{40, 0x1900}] = eventHotKeyExistsErr;
    fakes.defaults.readLate(
        {{"primaryHotKeyCode", std::int64_t{40}}, {"primaryHotKeyModifiers", std::int64_t{0x1900}}});
    EXPECT_FALSE(fields.primaryShortcutIsRegistered());
    EXPECT_EQ(fields.primaryShortcutStatusText(),
              "Ctrl + Option + Command + K is unavailable right now. macOS returned -9878.");
    fakes.defaults.values.clear();
    fakes.defaults.readLate(
        {{"primaryHotKeyCode", std::int64_t{18}}, {"primaryHotKeyModifiers", std::int64_t{0x1B00}}});
    EXPECT_FALSE(fields.primaryShortcutIsRegistered());
    EXPECT_EQ(fields.primaryShortcutStatusText(), "Hyper + 1 is reserved in Raycast. Choose a different Hyper key.");
}

TEST_F(LateReadingTest, shortcut_changedSince_staysRegistered) {
    controller->applyPrimaryShortcut({37, 0x1900});
    fakes.journal.clear();
    fakes.defaults.readLate(
        {{"primaryHotKeyCode", std::int64_t{40}}, {"primaryHotKeyModifiers", std::int64_t{0x1900}}});
    EXPECT_EQ(fields.primaryShortcut(), (KeyboardShortcut{37, 0x1900}));
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
    EXPECT_EQ(fakes.preferencesWindowViews.view->savedPointsSummary, "2 saved cursor points.");
    EXPECT_TRUE(calls({"setTitle"}).empty()) << "no message for what a person did not ask for";
}

TEST_F(LateReadingTest, emptyStore_changesNothing) {
    savePoints(1);
    fakes.defaults.readLate({});
    EXPECT_EQ(names(), std::vector<std::string>{"Point 1"});
    EXPECT_TRUE(calls({"setObjects"}).empty());
}

TEST_F(LateReadingTest, controllerGone_nobodyTakesItIn) {
    EXPECT_TRUE(fakes.defaults.hasLateReadHandler());
    controller = nullptr;
    EXPECT_FALSE(fakes.defaults.hasLateReadHandler());
}

}  // namespace
}  // namespace vantrel
