#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

class HotKeyTest : public ControllerTest {
  protected:
    /// A launched controller whose every action leaves a trace: three displays in a row, the pointer on the middle one,
    /// a saved point, no animation, no sound.
    void prepareActions() {
        fakes.defaults.values = {
            {"animation", "none"},
            {"soundEnabled", false},
            {"savedPoints",
             DefaultsData{
                 R"([{"id":"00000000-0000-0000-0000-0000000000A1","name":"Corner","point":{"x":11,"y":12}}])"}}};
        launch();
        fakes.displays.layout = {{1, CGRect{{-1000, 0}, {1000, 800}}},
                                 {2, CGRect{{0, 0}, {1000, 800}}},
                                 {3, CGRect{{1000, 0}, {1000, 800}}}};
        fakes.pointer.location = {100, 100};
    }
};

const CGPoint leftCentre{-500, 400};
const CGPoint rightCentre{1500, 400};
const CGPoint savedPlace{11, 12};

TEST_F(HotKeyTest, launch_handlerRefused_flashesAndRegistersAllTheSame) {
    fakes.hotKeys.installStatus = -1;
    controller->applicationDidFinishLaunching();
    EXPECT_EQ(calls({"InstallEventHandler", "setTitle", "RegisterEventHotKey", "setMenu"}),
              (fake::Journal{"setTitle(Vantrel)", "InstallEventHandler", "setTitle(Hotkeys off)",
                             "RegisterEventHotKey(2, 6912, id 1)", "RegisterEventHotKey(124, 6400, id 2)",
                             "RegisterEventHotKey(123, 6400, id 3)", "RegisterEventHotKey(46, 6400, id 4)",
                             "RegisterEventHotKey(1, 6912, id 5)", "setMenu"}));
    EXPECT_EQ(shortcutLine(), "Shortcut: Hyper + D");
    EXPECT_EQ(openSettings().content.shortcutStatus, "Ready. With Raycast Hyper Key, use Caps Lock + D.");
}

TEST_F(HotKeyTest, launch_storedShortcutReserved_registersTheFixedKeysOnly) {
    fakes.defaults.values = {{"primaryHotKeyCode", std::int64_t{20}}, {"primaryHotKeyModifiers", std::int64_t{6912}}};
    launch();
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + 3");
    EXPECT_EQ(fakes.statusBar.title, "Vantrel");
    EXPECT_EQ(openSettings().content.shortcutStatus, "Hyper + 3 is reserved in Raycast. Choose a different Hyper key.");
    EXPECT_EQ(releasedAtTheEnd(), "id 2, id 3, id 4, id 5");
}

TEST_F(HotKeyTest, launch_shortcutRefused_tellsTheStatusAndDoesNotFlash) {
    for (const OSStatus status : {eventHotKeyExistsErr, 0, 5}) {
        fakes.hotKeys.refusals = {{{2, hyper}, status}};
        relaunch();
        EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + D");
        EXPECT_EQ(fakes.statusBar.title, "Vantrel");
        EXPECT_EQ(openSettings().content.shortcutStatus,
                  "Hyper + D is unavailable right now. macOS returned " + std::to_string(status) + ".");
    }
}

TEST_F(HotKeyTest, launch_whileRegistered_releasesTheOldRegistrationFirst) {
    launch();
    controller->applicationDidFinishLaunching();
    const fake::Journal registrations = calls({"UnregisterEventHotKey", "RegisterEventHotKey"});
    ASSERT_GE(registrations.size(), 2U);
    EXPECT_EQ(registrations[0], "UnregisterEventHotKey(id 1)");
    EXPECT_EQ(registrations[1], "RegisterEventHotKey(2, 6912, id 1)");
}

TEST_F(HotKeyTest, launch_whileRegisteredAndNowReserved_isNoLongerRegistered) {
    launch();
    fakes.defaults.values = {{"primaryHotKeyCode", std::int64_t{18}}, {"primaryHotKeyModifiers", std::int64_t{6912}}};
    controller->applicationDidFinishLaunching();
    EXPECT_EQ(calls({"UnregisterEventHotKey"}), fake::Journal{"UnregisterEventHotKey(id 1)"});
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + 1");
    EXPECT_EQ(openSettings().content.shortcutStatus, "Hyper + 1 is reserved in Raycast. Choose a different Hyper key.");
    EXPECT_EQ(releasedAtTheEnd(), "id 2, id 3, id 4, id 5");
}

TEST_F(HotKeyTest, launch_refusedWithAReference_isNotRegistered) {
    fakes.hotKeys.refusals = {{{2, hyper}, eventHotKeyExistsErr}, {{124, controlOptionCommand}, eventHotKeyExistsErr}};
    fakes.hotKeys.refusesWithReference = true;
    launch();
    EXPECT_EQ(shortcutLine(), "Shortcut unavailable: Hyper + D");
    EXPECT_EQ(releasedAtTheEnd(), "id 3, id 4, id 5");
}

TEST_F(HotKeyTest, launch_fixedKeyRefused_isAbsentWithoutAWord) {
    fakes.hotKeys.refusals = {{{123, controlOptionCommand}, eventHotKeyExistsErr}, {{46, controlOptionCommand}, 0}};
    launch();
    EXPECT_TRUE(fakes.hotKeys.isRegistered({124, controlOptionCommand}));
    EXPECT_TRUE(fakes.hotKeys.isRegistered({1, hyper}));
    EXPECT_EQ(fakes.statusBar.title, "Vantrel");
    EXPECT_EQ(openSettings().content.shortcutStatus, "Ready. With Raycast Hyper Key, use Caps Lock + D.");
    EXPECT_EQ(releasedAtTheEnd(), "id 1, id 2, id 5");
}

TEST_F(HotKeyTest, press_anyHotKey_actsOnALaterTurn) {
    prepareActions();
    ASSERT_TRUE(fakes.hotKeys.press({2, hyper}));
    EXPECT_TRUE(fakes.pointer.warps.empty());
    EXPECT_EQ(fakes.mainQueue.pendingTasks(), 1U);
    EXPECT_EQ(fakes.mainQueue.turn(), 1U);
    EXPECT_EQ(fakes.pointer.warps, std::vector<CGPoint>{rightCentre});
}

TEST_F(HotKeyTest, press_eachCombination_doesItsAction) {
    const std::vector<std::pair<fake::FakeHotKeys::Combination, CGPoint>> cases{
        {{2, hyper}, rightCentre},
        {{124, controlOptionCommand}, rightCentre},
        {{123, controlOptionCommand}, leftCentre},
        {{46, controlOptionCommand}, savedPlace}};
    prepareActions();
    for (const auto& [combination, target] : cases) {
        fakes.pointer.location = {100, 100};
        ASSERT_TRUE(fakes.hotKeys.press(combination));
        fakes.mainQueue.turn();
        EXPECT_EQ(fakes.pointer.location, target) << combination.first;
    }
    ASSERT_TRUE(fakes.hotKeys.press({1, hyper}));
    fakes.mainQueue.turn();
    EXPECT_EQ(savedPointsLine(), "Saved Points: 2 points");
}

TEST_F(HotKeyTest, press_combinationOfOtherModifiers_isNobodys) {
    prepareActions();
    EXPECT_FALSE(fakes.hotKeys.press({2, controlOptionCommand}));
    EXPECT_FALSE(fakes.hotKeys.press({1, controlOptionCommand}));
    EXPECT_EQ(fakes.mainQueue.pendingTasks(), 0U);
}

TEST_F(HotKeyTest, press_primaryInManualMode_goesToTheSavedPoint) {
    prepareActions();
    controller->preferencesDidChangeMode(VantrelMode::manual);
    ASSERT_TRUE(fakes.hotKeys.press({2, hyper}));
    fakes.mainQueue.turn();
    EXPECT_EQ(fakes.pointer.location, savedPlace);
}

TEST_F(HotKeyTest, press_unknownId_doesNothing) {
    prepareActions();
    for (const std::uint32_t id : {0U, 6U, 7U, 4294967295U}) {
        EXPECT_EQ(fakes.hotKeys.deliverPress(EventHotKeyID{vantrelHotKeySignature, id}), 0);
        fakes.mainQueue.turn();
    }
    EXPECT_TRUE(fakes.pointer.warps.empty());
    EXPECT_TRUE(calls({"setObjects", "setMenu"}).empty());
    EXPECT_EQ(fakes.statusBar.title, "Vantrel");
}

TEST_F(HotKeyTest, press_foreignSignature_actsByTheIdAlone) {
    prepareActions();
    EXPECT_EQ(fakes.hotKeys.deliverPress(EventHotKeyID{fourCharCode("ELSE"), 4}), 0);
    fakes.mainQueue.turn();
    EXPECT_EQ(fakes.pointer.location, savedPlace);
}

TEST_F(HotKeyTest, hotKeyPressed_withoutEventOrController_returnsZero) {
    prepareActions();
    const EventHotKeyID hotKeyID{vantrelHotKeySignature, 1};
    const auto event = reinterpret_cast<EventRef>(&hotKeyID);
    EXPECT_EQ(AppDelegate::hotKeyPressed(nullptr, nullptr, controller.get()), 0);
    EXPECT_EQ(AppDelegate::hotKeyPressed(nullptr, event, nullptr), 0);
    EXPECT_EQ(fakes.mainQueue.pendingTasks(), 0U);
}

TEST_F(HotKeyTest, press_eventCannotBeRead_returnsItsStatus) {
    prepareActions();
    fakes.hotKeys.readStatus = -9870;
    EXPECT_EQ(fakes.hotKeys.deliverPress(EventHotKeyID{vantrelHotKeySignature, 1}), -9870);
    EXPECT_EQ(fakes.mainQueue.pendingTasks(), 0U);
}

TEST_F(HotKeyTest, press_controllerReleasedBeforeTheTask_isKeptByTheTask) {
    prepareActions();
    ASSERT_TRUE(fakes.hotKeys.press({2, hyper}));
    const std::weak_ptr<AppDelegate> observer = controller;
    controller = nullptr;
    EXPECT_FALSE(observer.expired());
    fakes.mainQueue.turn();
    EXPECT_EQ(fakes.pointer.location, rightCentre);
    EXPECT_TRUE(observer.expired());
}

}  // namespace
}  // namespace vantrel
