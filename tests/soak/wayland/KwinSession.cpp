#include "tests/soak/wayland/KwinSession.hpp"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace vantrel::soak {

namespace {

constexpr int outputCount = 5;

ShownDisplay startingDisplay(int number) {
    constexpr int width = 480;
    return {.number = number, .output = {.mode = "480x360", .x = width * (number - 1)}, .width = width, .height = 360};
}

desk::KwinOptions optionsAtTheStart() {
    desk::KwinOptions options{.outputs = {}, .keyboardLayouts = "us,de,ru"};
    for (int number = 1; number <= outputCount; ++number) {
        options.outputs.push_back(startingDisplay(number).output);
    }
    return options;
}

}  // namespace

KwinSession::KwinSession() : desk_(optionsAtTheStart()), bus_(desk_.kwin().busAddress()) {
    std::vector<ShownDisplay> displays;
    std::vector<int> numbers;
    for (int number = 1; number <= outputCount; ++number) {
        displays.push_back(startingDisplay(number));
        numbers.push_back(number);
    }
    expect(displays, numbers);
    // When KWin has written all of its own.
    desk::waitUntil([&] {
        shortcutsBefore_ = storedShortcuts();
        return !shortcutsBefore_.empty() &&
               !desk::waitUntil([&] { return storedShortcuts() != shortcutsBefore_; }, std::chrono::seconds(1));
    });
}

std::vector<DisplayShape> KwinSession::shapes() const {
    return {{"480x360", "1", 480, 360},
            {"480x360", "1.25", 384, 288},
            {"480x360", "1.5", 320, 240},
            {"480x360", "2", 240, 180},
            {"480x360", "2.5", 192, 144}};
}

void KwinSession::apply(const std::vector<ShownDisplay>& displays) {
    std::vector<std::pair<int, desk::PrivateOutput>> outputs;
    outputs.reserve(displays.size());
    for (const ShownDisplay& display : displays) {
        outputs.emplace_back(display.number, display.output);
    }
    desk_.kwin().show(outputs);
}

desk::LayoutPoint KwinSession::mainCorner(const std::vector<ShownDisplay>& displays) const {
    int left = std::numeric_limits<int>::max();
    int top = left;
    for (const ShownDisplay& display : displays) {
        left = std::min(left, display.output.x);
        top = std::min(top, display.output.y);
    }
    return {.x = static_cast<double>(-left), .y = static_cast<double>(-top)};
}

std::vector<desk::LayoutArea> KwinSession::areas(const std::vector<ShownDisplay>& displays) const {
    const desk::LayoutPoint corner = mainCorner(displays);
    std::vector<desk::LayoutArea> areas;
    areas.reserve(displays.size());
    for (const ShownDisplay& display : displays) {
        areas.push_back({.x = display.output.x + static_cast<int>(corner.x),
                         .y = display.output.y + static_cast<int>(corner.y),
                         .width = display.width,
                         .height = display.height});
    }
    return areas;
}

void KwinSession::reconfigure() {
    if (!bus_.call("org.kde.KWin", "/KWin", "org.kde.KWin", "reconfigure", nullptr)) {
        throw std::runtime_error("KWin does not read its configuration again");
    }
    awaitShown();
}

desk::LayoutPoint KwinSession::kept(desk::LayoutPoint point) const {
    return desk::KwinProcess::keepsWholePoints()
               ? desk::LayoutPoint{.x = std::floor(point.x + 0.5), .y = std::floor(point.y + 0.5)}
               : point;
}

void KwinSession::awaitKeysTold() {
    Session::awaitKeysTold();
    // What it has told the bus before it answers this has gone to the agent then.
    if (!bus_.call("org.kde.KWin", "/KWin", "org.freedesktop.DBus.Peer", "Ping", nullptr)) {
        throw std::runtime_error("KWin does not answer");
    }
}

std::string KwinSession::storedShortcuts() {
    std::ostringstream text;
    text << std::ifstream(desk_.compositor().runtimeDirectory() / ".config" / "kglobalshortcutsrc").rdbuf();
    return text.str();
}

void KwinSession::checkNoHotKeysRemain() {
    if (!desk::waitUntil([this] { return storedShortcuts() == shortcutsBefore_; })) {
        throw std::runtime_error("the agent has ended, and kglobalshortcutsrc is not what it was:\n" +
                                 storedShortcuts());
    }
}

}  // namespace vantrel::soak
