#include <functional>
#include <ostream>

#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

struct Operation {
    const char* name;
    std::function<void(AppDelegate&)> call;
};

std::ostream& operator<<(std::ostream& stream, const Operation& operation) {
    return stream << operation.name;
}

class MainThreadTest : public ControllerTest, public testing::WithParamInterface<Operation> {};

using MainThreadDeathTest = MainThreadTest;

TEST_P(MainThreadDeathTest, call_onAnotherThread_stopsTheProgram) {
    launch();
    fakes.mainQueue.isOnMainThread = false;
    EXPECT_DEATH(GetParam().call(*controller),
                 std::string("vantrel: Fatal error: ") + GetParam().name + " must be called on the main thread");
}

class SpentTimer final : public Timer {
  public:
    void invalidate() override {}
    [[nodiscard]] bool isValid() const override { return false; }
};

INSTANTIATE_TEST_SUITE_P(
    EntryPoints, MainThreadDeathTest,
    testing::Values(
        Operation{"applicationDidFinishLaunching",
                  [](AppDelegate& controller) { controller.applicationDidFinishLaunching(); }},
        Operation{"applicationWillTerminate", [](AppDelegate& controller) { controller.applicationWillTerminate(); }},
        Operation{"applicationOpen", [](AppDelegate& controller) { controller.applicationOpen({}); }},
        Operation{"applicationDidReopen", [](AppDelegate& controller) { controller.applicationDidReopen(); }},
        Operation{"teleportPrimary", [](AppDelegate& controller) { controller.teleportPrimary(); }},
        Operation{"teleportNextDisplay", [](AppDelegate& controller) { controller.teleportNextDisplay(); }},
        Operation{"teleportPreviousDisplay", [](AppDelegate& controller) { controller.teleportPreviousDisplay(); }},
        Operation{"teleportSavedPoint", [](AppDelegate& controller) { controller.teleportSavedPoint(); }},
        Operation{"saveCurrentPoint", [](AppDelegate& controller) { controller.saveCurrentPoint(); }},
        Operation{"clearSavedPoints", [](AppDelegate& controller) { controller.clearSavedPoints(); }},
        Operation{"animationTick",
                  [](AppDelegate& controller) {
                      SpentTimer timer;
                      controller.animationTick(timer);
                  }},
        Operation{"hotKeyPressed",
                  [](AppDelegate& controller) {
                      const EventHotKeyID hotKeyID{vantrelHotKeySignature, 1};
                      AppDelegate::hotKeyPressed(nullptr, reinterpret_cast<EventRef>(&hotKeyID), &controller);
                  }}),
    [](const testing::TestParamInfo<Operation>& operation) { return operation.param.name; });

INSTANTIATE_TEST_SUITE_P(
    MenuAndWindow, MainThreadDeathTest,
    testing::Values(
        Operation{"rebuildMenu", [](AppDelegate& controller) { controller.rebuildMenu(); }},
        Operation{"selectMode", [](AppDelegate& controller) { controller.selectMode({}); }},
        Operation{"selectAnimation", [](AppDelegate& controller) { controller.selectAnimation({}); }},
        Operation{"toggleSound", [](AppDelegate& controller) { controller.toggleSound(); }},
        Operation{"openSettings", [](AppDelegate& controller) { controller.openSettings(); }},
        Operation{"quit", [](AppDelegate& controller) { controller.quit(); }},
        Operation{"refreshPreferencesWindow", [](AppDelegate& controller) { controller.refreshPreferencesWindow(); }},
        Operation{"preferencesDidRecordShortcut",
                  [](AppDelegate& controller) { controller.preferencesDidRecordShortcut({}); }},
        Operation{"preferencesDidResetShortcut",
                  [](AppDelegate& controller) { controller.preferencesDidResetShortcut(); }},
        Operation{"preferencesDidChangeMode", [](AppDelegate& controller) { controller.preferencesDidChangeMode({}); }},
        Operation{"preferencesDidChangeAnimation",
                  [](AppDelegate& controller) { controller.preferencesDidChangeAnimation({}); }},
        Operation{"preferencesDidChangeSound",
                  [](AppDelegate& controller) { controller.preferencesDidChangeSound(true); }},
        Operation{"preferencesDidClearSavedPoints",
                  [](AppDelegate& controller) { controller.preferencesDidClearSavedPoints(); }}),
    [](const testing::TestParamInfo<Operation>& operation) { return operation.param.name; });

using StatusResetDeathTest = ControllerTest;

TEST_F(StatusResetDeathTest, reset_onAnotherThread_stopsTheProgram) {
    launch();
    controller->flashStatus("Saved");
    fakes.mainQueue.isOnMainThread = false;
    EXPECT_DEATH(fakes.mainQueue.advance(Seconds(1.2)), "resetStatusTitle must be called on the main thread");
}

}  // namespace
}  // namespace vantrel
