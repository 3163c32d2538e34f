#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Vantrel/Controller/AppDelegate.hpp"
#include "tests/fakes/FakePlatform.hpp"

namespace vantrel {

/// The tests' window on the controller's fields.
struct AppDelegateInspector {
    AppDelegate& controller;

    [[nodiscard]] VantrelMode& mode() const { return controller.mode; }
    [[nodiscard]] AnimationStyle& animationStyle() const { return controller.animationStyle; }
    [[nodiscard]] bool& soundEnabled() const { return controller.soundEnabled; }
    [[nodiscard]] KeyboardShortcut& primaryShortcut() const { return controller.primaryShortcut; }
    [[nodiscard]] bool primaryShortcutIsRegistered() const { return controller.primaryShortcutIsRegistered; }
    [[nodiscard]] const std::string& primaryShortcutStatusText() const { return controller.primaryShortcutStatusText; }
    [[nodiscard]] std::vector<SavedPoint>& savedPoints() const { return controller.savedPoints; }
    [[nodiscard]] std::int64_t& savedPointIndex() const { return controller.savedPointIndex; }
    [[nodiscard]] RememberedPositions& rememberedPositions() const { return controller.rememberedPositions; }
    [[nodiscard]] EventHotKeyRef primaryHotKeyRef() const { return controller.primaryHotKeyRef; }
    [[nodiscard]] std::size_t secondaryHotKeyCount() const { return controller.secondaryHotKeyRefs.size(); }
    [[nodiscard]] EventHandlerRef eventHandlerRef() const { return controller.eventHandlerRef; }
    [[nodiscard]] const std::shared_ptr<Timer>& animationTimer() const { return controller.animationTimer; }
    [[nodiscard]] std::optional<CursorAnimation>& cursorAnimation() const { return controller.cursorAnimation; }
    [[nodiscard]] const std::shared_ptr<DispatchWorkItem>& statusResetItem() const {
        return controller.statusResetItem;
    }
    [[nodiscard]] bool hasPreferencesWindow() const { return controller.preferencesWindowController != nullptr; }

    void teleport(const std::optional<VantrelPoint>& target) const { controller.teleport(target); }
    void saveSavedPoints() const { controller.saveSavedPoints(); }
    void saveRememberedPositions() const { controller.saveRememberedPositions(); }
};

/// A controller on a fake platform. It is created with the test and launched when the test says so.
class ControllerTest : public testing::Test {
  protected:
    /// Runs the launch and forgets what it called.
    void launch() {
        controller->applicationDidFinishLaunching();
        fakes.journal.clear();
    }

    /// Two displays side by side: 1, the main one, and 2 on its left.
    void layOutTwoDisplays() {
        fakes.displays.layout = {{1, CGRect{{0, 0}, {1512, 982}}}, {2, CGRect{{-1024, 100}, {1024, 768}}}};
    }

    /// The calls of these operations since the launch, in order.
    [[nodiscard]] fake::Journal calls(std::initializer_list<std::string_view> operations) const {
        return fake::entriesOf(fakes.journal, operations);
    }

    /// The bytes stored under the key; "(nothing)" when there are none.
    [[nodiscard]] std::string storedData(std::string_view key) {
        return fakes.defaults.dataForKey(key).value_or("(nothing)");
    }

    fake::FakePlatform fakes;
    std::shared_ptr<AppDelegate> controller =
        AppDelegate::create(fakes.platform(), vantrelHotKeySignature, AppDelegate::hotKeyPressed);
    AppDelegateInspector fields{*controller};
};

}  // namespace vantrel
