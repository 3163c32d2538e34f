#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Vantrel/Controller/AppDelegate.hpp"
#include "tests/fakes/FakePlatform.hpp"

namespace vantrel {

// The modifiers of the fixed hot keys.
inline constexpr std::uint32_t hyper = 0x1B00;
inline constexpr std::uint32_t controlOptionCommand = 0x1900;

/// Remembered positions by display, as the store names it.
using Positions = std::map<std::string, VantrelPoint>;

/// A controller on a fake platform. It is created with the test and launched when the test says so.
class ControllerTest : public testing::Test {
  protected:
    /// Runs the launch and forgets what it called.
    void launch() {
        controller->applicationDidFinishLaunching();
        fakes.journal.clear();
    }

    /// The program ends, and what starts in its place has yet to launch.
    void endAndStartAgain() {
        controller->applicationWillTerminate();
        controller = makeController();
        fakes.journal.clear();
    }

    /// The program ends, starts again and launches.
    void relaunch() {
        endAndStartAgain();
        launch();
    }

    /// Two displays side by side: 1, the main one, and 2 on its left.
    void layOutTwoDisplays() {
        fakes.displays.layout = {{1, CGRect{{0, 0}, {1512, 982}}}, {2, CGRect{{-1024, 100}, {1024, 768}}}};
    }

    /// The calls of these operations since the launch, in order.
    [[nodiscard]] fake::Journal calls(std::initializer_list<std::string_view> operations) const {
        return fake::entriesOf(fakes.journal, operations);
    }

    /// Puts the value into the store, where the next launch finds it.
    void store(std::string_view key, DefaultsValue value) {
        fakes.defaults.values.insert_or_assign(std::string(key), std::move(value));
    }

    /// The bytes stored under the key; "(nothing)" when there are none.
    [[nodiscard]] std::string storedData(std::string_view key) {
        return fakes.defaults.dataForKey(key).value_or("(nothing)");
    }

    /// The saved points in the store; none when there is nothing that can be read.
    [[nodiscard]] std::vector<SavedPoint> storedSavedPoints() {
        return JSONDecoder().decodeSavedPoints(storedData("savedPoints")).value_or(std::vector<SavedPoint>());
    }

    /// The remembered positions in the store; none when there is nothing that can be read.
    [[nodiscard]] Positions storedPositions() {
        return JSONDecoder().decodePositions(storedData("rememberedPositions")).value_or(Positions());
    }

    // What the menu says. It is built anew with each change.
    [[nodiscard]] std::string shortcutLine() const { return fakes.statusBar.menu.at(11).title; }
    [[nodiscard]] std::string modeLine() const { return fakes.statusBar.menu.at(12).title; }
    [[nodiscard]] std::string savedPointsLine() const { return fakes.statusBar.menu.at(13).title; }

    /// Opens the settings window, or refreshes it and brings it to the front.
    fake::FakePreferencesWindowView& openSettings() {
        controller->openSettings();
        return *fakes.preferencesWindowViews.view;
    }

    /// Jumps that many times from saved point to saved point: what is shown at each.
    std::vector<std::string> jumpToSavedPoints(int count) {
        std::vector<std::string> shown;
        for (int jump = 0; jump < count; ++jump) {
            controller->teleportSavedPoint();
            shown.push_back(fakes.statusBar.title);
        }
        return shown;
    }

    /// Ends the program: the hot keys that it releases, in order: "id 1, id 2".
    std::string releasedAtTheEnd() {
        fakes.journal.clear();
        controller->applicationWillTerminate();
        std::string released;
        for (const std::string& call : calls({"UnregisterEventHotKey"})) {
            const std::size_t begin = call.find('(') + 1;
            released += (released.empty() ? "" : ", ") + call.substr(begin, call.find(')') - begin);
        }
        return released;
    }

    [[nodiscard]] std::shared_ptr<AppDelegate> makeController() {
        return AppDelegate::create(fakes.platform(), vantrelHotKeySignature, AppDelegate::hotKeyPressed);
    }

    fake::FakePlatform fakes;
    std::shared_ptr<AppDelegate> controller = makeController();
};

}  // namespace vantrel
