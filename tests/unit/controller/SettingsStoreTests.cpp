#include <functional>
#include <limits>

#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

class SettingsStoreTest : public ControllerTest {};

TEST_F(SettingsStoreTest, rememberedPosition_isStoredByTheDisplaysDecimalNumber) {
    launch();
    fakes.displays.layout = {{4294967295U, CGRect{{-100, 0}, {1000, 800}}}};
    fakes.pointer.location = {-0.5, 2};
    controller->teleportNextDisplay();
    EXPECT_EQ(storedData("rememberedPositions"), R"({"4294967295":{"x":-0.5,"y":2}})");
}

TEST_F(SettingsStoreTest, rememberedPosition_coordinateWithoutJSONForm_keepsWhatIsStored) {
    launch();
    layOutTwoDisplays();
    fakes.pointer.location = {1, 2};
    controller->teleportNextDisplay();
    fakes.pointer.location = {std::numeric_limits<double>::quiet_NaN(), 0};
    controller->teleportNextDisplay();
    EXPECT_EQ(storedData("rememberedPositions"), R"({"1":{"x":1,"y":2}})");
    EXPECT_EQ(calls({"setObjects"}).size(), 1U);
}

TEST_F(SettingsStoreTest, savedPoint_coordinateWithoutJSONForm_keepsWhatIsStored) {
    launch();
    layOutTwoDisplays();
    fakes.pointer.location = {1, 2};
    controller->saveCurrentPoint();
    const std::string stored = storedData("savedPoints");
    fakes.pointer.location = {std::numeric_limits<double>::infinity(), 2};
    controller->saveCurrentPoint();
    EXPECT_EQ(
        stored,
        R"([{"id":"00000000-0000-0000-0000-000000000001","name":"Point 1","point":{"x":1,"y":2},"displayID":1}])");
    EXPECT_EQ(storedData("savedPoints"), stored);
}

TEST_F(SettingsStoreTest, relaunch_afterChanges_findsThemAgain) {
    launch();
    layOutTwoDisplays();
    fakes.pointer.location = {700, 500};
    controller->preferencesDidChangeMode(VantrelMode::manual);
    controller->preferencesDidChangeAnimation(AnimationStyle::none);
    controller->preferencesDidChangeSound(false);
    controller->applyPrimaryShortcut({40, 0x1900});
    controller->saveCurrentPoint();
    const std::string savedPoints = storedData("savedPoints");
    fakes.pointer.location = {600, 400};
    controller->teleportNextDisplay();

    relaunch();
    EXPECT_EQ(modeLine(), "Mode: Manual: saved points");
    EXPECT_EQ(shortcutLine(), "Shortcut: Ctrl + Option + Command + K");
    auto& window = openSettings();
    EXPECT_EQ(window.content.selectedAnimation, 0) << "none";
    EXPECT_FALSE(window.content.isSoundChecked);
    EXPECT_EQ(window.drawnRows(), std::vector<std::string>{"Point 1 - x 700, y 500, display 1"});
    EXPECT_EQ(jumpToSavedPoints(1), std::vector<std::string>{"Point 1"});
    EXPECT_EQ(fakes.pointer.location, (CGPoint{700, 500}));
    fakes.pointer.location = {-300, 400};
    controller->teleportNextDisplay();
    EXPECT_EQ(fakes.pointer.location, (CGPoint{600, 400}));
    EXPECT_EQ(storedPositions(), (Positions{{"1", {600, 400}}, {"2", {-300, 400}}}));
    controller->saveCurrentPoint();
    EXPECT_TRUE(storedData("savedPoints").starts_with(savedPoints.substr(0, savedPoints.size() - 1)));
}

TEST_F(SettingsStoreTest, anyChange_isInForceBeforeItIsStored) {
    launch();
    const auto expectWhenStoring = [this](const std::function<bool()>& isInForce, const std::function<void()>& change) {
        int stores = 0;
        fakes.defaults.whenStoring = [&] {
            ++stores;
            controller->rebuildMenu();
            EXPECT_TRUE(isInForce());
        };
        change();
        EXPECT_EQ(stores, 1);
    };
    expectWhenStoring([this] { return modeLine() == "Mode: Manual: saved points"; },
                      [this] { controller->preferencesDidChangeMode(VantrelMode::manual); });
    expectWhenStoring([this] { return openSettings().content.selectedAnimation == 0; },
                      [this] { controller->preferencesDidChangeAnimation(AnimationStyle::none); });
    expectWhenStoring([this] { return !openSettings().content.isSoundChecked; },
                      [this] { controller->preferencesDidChangeSound(false); });
    expectWhenStoring([this] { return shortcutLine() == "Shortcut: Ctrl + Option + Command + K"; },
                      [this] {
                          controller->applyPrimaryShortcut({40, 0x1900});
                      });
    expectWhenStoring([this] { return savedPointsLine() == "Saved Points: 1 point"; },
                      [this] { controller->saveCurrentPoint(); });
    expectWhenStoring([this] { return savedPointsLine() == "Saved Points: none"; },
                      [this] { controller->clearSavedPoints(); });
}

TEST_F(SettingsStoreTest, storedTypes_areThoseOfTheContract) {
    launch();
    controller->preferencesDidChangeMode(VantrelMode::manual);
    controller->preferencesDidChangeAnimation(AnimationStyle::none);
    controller->preferencesDidChangeSound(false);
    controller->applyPrimaryShortcut({40, 0x1900});
    controller->clearSavedPoints();
    const auto& values = fakes.defaults.values;
    EXPECT_EQ(values.at("mode"), DefaultsValue("manual"));
    EXPECT_EQ(values.at("animation"), DefaultsValue("none"));
    EXPECT_EQ(values.at("soundEnabled"), DefaultsValue(false));
    EXPECT_EQ(values.at("primaryHotKeyCode"), DefaultsValue(std::int64_t{40}));
    EXPECT_EQ(values.at("primaryHotKeyModifiers"), DefaultsValue(std::int64_t{6400}));
    EXPECT_EQ(values.at("savedPoints"), DefaultsValue(DefaultsData{"[]"}));
}

}  // namespace
}  // namespace vantrel
