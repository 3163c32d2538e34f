#include <functional>
#include <limits>

#include "tests/unit/controller/ControllerTest.hpp"

namespace vantrel {
namespace {

class SettingsStoreTest : public ControllerTest {};

TEST_F(SettingsStoreTest, saveRememberedPositions_writesEveryDisplayByItsDecimalNumber) {
    launch();
    fields.rememberedPositions() = {{4294967295U, {-0.5, 2}}};
    fields.saveRememberedPositions();
    EXPECT_EQ(storedData("rememberedPositions"), R"({"4294967295":{"x":-0.5,"y":2}})");
}

TEST_F(SettingsStoreTest, saveRememberedPositions_coordinateWithoutJSONForm_keepsWhatIsStored) {
    launch();
    fields.rememberedPositions() = {{1, {1, 2}}};
    fields.saveRememberedPositions();
    fields.rememberedPositions().emplace(2U, VantrelPoint(std::numeric_limits<double>::quiet_NaN(), 0));
    fields.saveRememberedPositions();
    EXPECT_EQ(storedData("rememberedPositions"), R"({"1":{"x":1,"y":2}})");
    EXPECT_EQ(calls({"setObjects"}).size(), 1U);
}

TEST_F(SettingsStoreTest, saveSavedPoints_coordinateWithoutJSONForm_keepsWhatIsStored) {
    launch();
    fields.savedPoints() = {SavedPoint{UUID(), "A", {1, 2}, 3}};
    fields.saveSavedPoints();
    const std::string stored = storedData("savedPoints");
    fields.savedPoints().push_back(SavedPoint{UUID(), "B", {std::numeric_limits<double>::infinity(), 2}, {}});
    fields.saveSavedPoints();
    EXPECT_EQ(stored,
              R"([{"id":"00000000-0000-0000-0000-000000000000","name":"A","point":{"x":1,"y":2},"displayID":3}])");
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
    controller->teleportDisplay(TeleportDirection::next);
    const std::vector<SavedPoint> savedPoints = fields.savedPoints();
    controller->applicationWillTerminate();

    const auto successor = AppDelegate::create(fakes.platform(), vantrelHotKeySignature, AppDelegate::hotKeyPressed);
    successor->applicationDidFinishLaunching();
    const AppDelegateInspector found{*successor};
    EXPECT_EQ(found.mode(), VantrelMode::manual);
    EXPECT_EQ(found.animationStyle(), AnimationStyle::none);
    EXPECT_FALSE(found.soundEnabled());
    EXPECT_EQ(found.primaryShortcut(), (KeyboardShortcut{40, 0x1900}));
    EXPECT_EQ(found.savedPoints(), savedPoints);
    EXPECT_EQ(found.savedPointIndex(), 0);
    EXPECT_EQ(found.rememberedPositions(), (RememberedPositions{{1, {700, 500}}}));
}

TEST_F(SettingsStoreTest, anyChange_theFieldIsSetBeforeItIsStored) {
    launch();
    const auto expectWhenStoring = [this](const std::function<bool()>& isSet, const std::function<void()>& change) {
        int stores = 0;
        fakes.defaults.whenStoring = [&] {
            ++stores;
            EXPECT_TRUE(isSet());
        };
        change();
        EXPECT_EQ(stores, 1);
    };
    expectWhenStoring([this] { return fields.mode() == VantrelMode::manual; },
                      [this] { controller->preferencesDidChangeMode(VantrelMode::manual); });
    expectWhenStoring([this] { return fields.animationStyle() == AnimationStyle::none; },
                      [this] { controller->preferencesDidChangeAnimation(AnimationStyle::none); });
    expectWhenStoring([this] { return !fields.soundEnabled(); },
                      [this] { controller->preferencesDidChangeSound(false); });
    expectWhenStoring(
        [this] {
            return fields.primaryShortcut() == KeyboardShortcut{40, 0x1900};
        },
        [this] {
            controller->applyPrimaryShortcut({40, 0x1900});
        });
    expectWhenStoring([this] { return fields.savedPoints().size() == 1; }, [this] { controller->saveCurrentPoint(); });
    expectWhenStoring([this] { return fields.savedPoints().empty(); }, [this] { controller->clearSavedPoints(); });
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
