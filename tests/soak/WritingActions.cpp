#include "tests/soak/WritingActions.hpp"

#include <array>
#include <memory>
#include <nlohmann/json.hpp>

#include "tests/desk/status/ScreenWindows.hpp"

namespace vantrel::soak {

namespace {

using desk::Chord;
using desk::MainPoint;
using nlohmann::json;

constexpr std::string_view down = "DOWN", up = "UP", space = "SPCE", tab = "TAB";
constexpr int burstLength = 200;

std::string valueOf(const StoreContents& contents, const std::string& key) {
    const auto found = contents.find(key);
    return found == contents.end() ? std::string() : found->second;
}

/// The JSON under the key; `empty` when there is none.
json jsonOf(const StoreContents& contents, const std::string& key, json empty) {
    const std::string value = valueOf(contents, key);
    const std::string type = "blob:";
    return value.starts_with(type) ? json::parse(value.substr(type.size()), nullptr, false) : std::move(empty);
}

bool isAt(const json& point, MainPoint place) {
    return point.is_object() && point.value("x", json()) == place.x && point.value("y", json()) == place.y;
}

/// Whether all keys but those named hold what they held.
bool othersAreEqual(StoreContents before, StoreContents now, const std::vector<std::string>& keys) {
    for (const std::string& key : keys) {
        before.erase(key);
        now.erase(key);
    }
    return before == now;
}

/// Somewhere else on the display that the pointer is on.
MainPoint movePointerAnywhere(SoakDesk& desk, Random& random) {
    const auto displays = desk::DisplayLayout::twoDisplays();
    const auto& bounds = random.oneOf(displays).bounds;
    const MainPoint place{.x = random.between(bounds.x + 30, bounds.x + bounds.width - 30),
                          .y = random.between(bounds.y + 30, bounds.y + bounds.height - 30)};
    desk.desk().pointer().moveTo(place);
    return place;
}

bool isAfterJump(const StoreContents& before, const StoreContents& now, MainPoint departure) {
    const std::string key = "rememberedPositions";
    json expected = jsonOf(before, key, json::object());
    const json stored = jsonOf(now, key, json::object());
    if (!stored.is_object() || !othersAreEqual(before, now, {key})) {
        return false;
    }
    // Of the display that was left and of no other there is something new.
    for (const auto& [display, point] : stored.items()) {
        if (isAt(point, departure)) {
            expected[display] = point;
            return expected == stored;
        }
    }
    return false;
}

/// Whether so many points were added, one to `most`, each a complete one.
bool isAfterSaves(const StoreContents& before, const StoreContents& now, MainPoint place, std::size_t most) {
    const std::string key = "savedPoints";
    const json old = jsonOf(before, key, json::array());
    json stored = jsonOf(now, key, json::array());
    if (!stored.is_array() || stored.size() <= old.size() || stored.size() > old.size() + most ||
        !othersAreEqual(before, now, {key})) {
        return false;
    }
    constexpr std::size_t identifierLength = 36;
    while (stored.size() > old.size()) {
        const json& last = stored.back();
        if (last.value("name", "") != "Point " + std::to_string(stored.size()) ||
            !isAt(last.value("point", json()), place) || last.value("id", "").size() != identifierLength ||
            !last.value("displayID", json()).is_number_unsigned()) {
            return false;
        }
        stored.erase(stored.size() - 1);
    }
    return stored == old;
}

bool isAfterChange(const StoreContents& before, const StoreContents& now, const StoreContents& changed) {
    StoreContents expected = before;
    for (const auto& [key, value] : changed) {
        expected[key] = value;
    }
    return expected == now;
}

WritingAction jump(SoakDesk& desk, Random& random) {
    const auto place = std::make_shared<MainPoint>();
    return {.name = "jump",
            .prepare = [&desk, &random, place] { *place = movePointerAnywhere(desk, random); },
            .trigger = [&desk] { desk.typist().type(desk::controlOptionCommand(desk::keys::rightArrow)); },
            .isAfter = [place](const auto& before, const auto& now) { return isAfterJump(before, now, *place); },
            .longest = 5};
}

WritingAction save(SoakDesk& desk, Random& random) {
    const auto place = std::make_shared<MainPoint>();
    return {.name = "save",
            .prepare = [&desk, &random, place] { *place = movePointerAnywhere(desk, random); },
            .trigger = [&desk] { desk.typist().type(desk::hyper(desk::keys::s)); },
            .isAfter = [place](const auto& before, const auto& now) { return isAfterSaves(before, now, *place, 1); },
            .longest = 5};
}

/// Enough to have the log moved into the database meanwhile.
WritingAction burstOfSaves(SoakDesk& desk, Random& random) {
    const auto place = std::make_shared<MainPoint>();
    return {.name = "many saves",
            .prepare = [&desk, &random, place] { *place = movePointerAnywhere(desk, random); },
            .trigger = [&desk] { desk.openURLs(std::vector<std::string>(burstLength, "vantrel:save-point")); },
            .isAfter = [place](const auto& before,
                               const auto& now) { return isAfterSaves(before, now, *place, burstLength); },
            .longest = 200};
}

WritingAction clear(SoakDesk& desk) {
    return {.name = "clear",
            .prepare = nullptr,
            .trigger = [&desk] { desk.click(MenuRow::clearPoints); },
            .isAfter =
                [](const auto& before, const auto& now) {
                    return isAfterChange(before, now, {{"savedPoints", "blob:[]"}});
                },
            .longest = 5};
}

/// A control of the settings window, so many tabulators from the first.
void goToControl(SoakDesk& desk, int tabs) {
    desk.openSettings();
    for (int step = 0; step < tabs; ++step) {
        desk.typist().type({tab});
    }
}

/// A drop-down list of two entries.
WritingAction choice(SoakDesk& desk, const std::string& key, int tabs, const char* first, const char* second) {
    const auto isFirst = std::make_shared<bool>();
    return {.name = key,
            .prepare =
                [&desk, key, tabs, first, isFirst] {
                    *isFirst = desk.store().read(key) == first;
                    goToControl(desk, tabs);
                },
            .trigger = [&desk, isFirst] { desk.typist().type({*isFirst ? down : up}); },
            .isAfter =
                [key, first, second, isFirst](const auto& before, const auto& now) {
                    return isAfterChange(before, now, {{key, std::string("text:") + (*isFirst ? second : first)}});
                },
            .longest = 60};
}

WritingAction sound(SoakDesk& desk) {
    constexpr int tabs = 4;
    const std::string key = "soundEnabled";
    const auto isOn = std::make_shared<bool>();
    return {.name = key,
            .prepare =
                [&desk, key, isOn] {
                    *isOn = desk.store().read(key) == "1";
                    goToControl(desk, tabs);
                },
            .trigger = [&desk] { desk.typist().type({space}); },
            .isAfter =
                [key, isOn](const auto& before, const auto& now) {
                    return isAfterChange(before, now, {{key, *isOn ? "integer:0" : "integer:1"}});
                },
            .longest = 60};
}

struct Shortcut {
    Chord chord;
    const char* keyCode;
    const char* modifiers;
};

WritingAction shortcut(SoakDesk& desk, Random& random) {
    static const std::vector<Shortcut> all{{desk::hyper(desk::keys::d), "2", "6912"},
                                           {desk::hyper(desk::keys::m), "46", "6912"},
                                           {{desk::keys::control, desk::keys::option, desk::keys::d}, "2", "6144"},
                                           {{desk::keys::control, desk::keys::shift, desk::keys::m}, "46", "4608"}};
    const auto chosen = std::make_shared<Shortcut>();
    return {.name = "shortcut",
            .prepare =
                [&desk, &random, chosen] {
                    *chosen = random.oneOf(all);
                    goToControl(desk, 0);
                    desk.typist().type({space});
                    desk.await("the recorder has the keyboard",
                               [&] { return desk::isKeyboardGrabbed(desk.desk().connection()); });
                },
            .trigger = [&desk, chosen] { desk.typist().type(chosen->chord); },
            .isAfter =
                [chosen](const auto& before, const auto& now) {
                    return isAfterChange(before, now,
                                         {{"primaryHotKeyCode", std::string("integer:") + chosen->keyCode},
                                          {"primaryHotKeyModifiers", std::string("integer:") + chosen->modifiers}});
                },
            .longest = 60};
}

}  // namespace

std::vector<WritingAction> writingActions(SoakDesk& desk, Random& random) {
    return {jump(desk, random),
            save(desk, random),
            burstOfSaves(desk, random),
            clear(desk),
            choice(desk, "mode", 2, "automatic", "manual"),
            choice(desk, "animation", 3, "none", "glide"),
            sound(desk),
            shortcut(desk, random)};
}

}  // namespace vantrel::soak
