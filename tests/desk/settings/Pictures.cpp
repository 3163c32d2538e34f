// What scripts/make-settings-pictures takes: the settings window in each of its states, with its frame, on a private
// desk.
#include <QApplication>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "tests/desk/settings/SettingsDesk.hpp"
#include "tests/desk/support/ChildProcess.hpp"

namespace vantrel::desk {
namespace {

constexpr DeskOptions deskOptions{.hasSessionBus = false, .hasWindowManager = true};

/// What a picture shows.
struct Scene {
    std::string_view name;
    bool hasPoints = false;
    bool isDark = false;
    bool isShortcutTaken = false;
    const char* scaleFactor = nullptr;
    double fontSize = 0;                       ///< in points; 0 for the desktop's
    void (*prepare)(SettingsDesk&) = nullptr;  ///< with the window open
};

void startRecording(SettingsDesk& settings) {
    settings.startRecording();
}

void typeWithoutModifier(SettingsDesk& settings) {
    settings.startRecording();
    settings.desk().keyboard().type({keys::d});
    settings.turnUntil([&] { return settings.statusIsRed(); });
}

constexpr std::array scenes = std::to_array<Scene>({
    {.name = "empty"},
    {.name = "points", .hasPoints = true},
    {.name = "recording", .hasPoints = true, .prepare = startRecording},
    {.name = "rejected", .hasPoints = true, .prepare = typeWithoutModifier},
    {.name = "unavailable", .hasPoints = true, .isShortcutTaken = true},
    {.name = "dark", .hasPoints = true, .isDark = true, .isShortcutTaken = true},
    {.name = "scale-1.25", .hasPoints = true, .scaleFactor = "1.25"},
    {.name = "scale-1.5", .hasPoints = true, .scaleFactor = "1.5"},
    {.name = "scale-2", .hasPoints = true, .scaleFactor = "2"},
    {.name = "large-font", .hasPoints = true, .fontSize = 18},
});

/// Sets the desktop to dark, as people do who have no desktop's settings for it.
void preferDark(Home& home) {
    const auto folder = home.path() / "config/gtk-3.0";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "settings.ini") << "[Settings]\ngtk-application-prefer-dark-theme=1\n";
}

void savePoints(SettingsDesk& settings) {
    for (const MainPoint place : {MainPoint{756, 491}, MainPoint{1400, 40}, MainPoint{120, 900}}) {
        settings.fakes().pointer.location = {static_cast<double>(place.x), static_cast<double>(place.y)};
        settings.controller().saveCurrentPoint();
    }
}

void savePicture(SettingsDesk& settings, const std::string& file) {
    // Whatever is still to be drawn.
    settings.holds([] { return true; }, std::chrono::milliseconds(500));
    const QRect frame = settings.window().frameGeometry();
    const double scale = settings.window().devicePixelRatioF();
    const auto pixels = [scale](int length) { return std::to_string(static_cast<int>(length * scale)); };
    runProgram(
        {"import", "-window", "root", "-crop",
         pixels(frame.width()) + "x" + pixels(frame.height()) + "+" + pixels(frame.x()) + "+" + pixels(frame.y()),
         "+repage", file},
        settings.desk().environment());
}

void takePicture(const Scene& scene, const std::string& file) {
    if (scene.scaleFactor != nullptr) {
        setenv("QT_SCALE_FACTOR", scene.scaleFactor, 1);
    }
    SettingsDesk settings(deskOptions,
                          scene.isShortcutTaken ? std::vector<Chord>{hyper(keys::d)} : std::vector<Chord>{});
    // Room for the largest.
    settings.desk().layout().apply({{.output = 0, .bounds = {.x = 0, .y = 0, .width = 2400, .height = 1800}}});
    if (scene.isDark) {
        preferDark(settings.desk().home());
    }
    if (scene.fontSize > 0) {
        QFont font = QApplication::font();
        font.setPointSizeF(scene.fontSize);
        QApplication::setFont(font);
    }
    if (scene.hasPoints) {
        savePoints(settings);
    }
    settings.open();
    if (scene.prepare != nullptr) {
        scene.prepare(settings);
    }
    savePicture(settings, file);
}

}  // namespace
}  // namespace vantrel::desk

int main(int argumentCount, char** arguments) {
    using vantrel::desk::scenes;
    if (argumentCount != 3) {
        std::fprintf(stderr, "Usage: %s SCENE FILE.png\n", arguments[0]);
        return 2;
    }
    const auto* const scene = std::find_if(scenes.begin(), scenes.end(),
                                           [&](const auto& candidate) { return candidate.name == arguments[1]; });
    if (scene == scenes.end()) {
        std::fprintf(stderr, "%s: no scene %s\n", arguments[0], arguments[1]);
        return 2;
    }
    try {
        vantrel::desk::takePicture(*scene, arguments[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", arguments[0], error.what());
        return 1;
    }
    return 0;
}
