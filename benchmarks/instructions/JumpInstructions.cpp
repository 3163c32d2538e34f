// A few hundred jumps through the real controller, planner, encoder and store, on displays and a pointer that are in
// memory: the same instructions in every run. scripts/count-instructions counts them.
//
//     vantrel-bench-instructions DIRECTORY JUMPS
#include <glib.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <string>

#include "Vantrel/Controller/AppDelegate.hpp"
#include "Vantrel/Desktop/Loop/GLibMainQueue.hpp"
#include "Vantrel/Desktop/Store/SQLiteUserDefaults.hpp"
#include "tests/fakes/FakePlatform.hpp"

namespace vantrel::bench {
namespace {

class TwoDisplays final : public DisplayServices {
  public:
    CGError CGGetActiveDisplayList(std::span<CGDirectDisplayID> activeDisplays, std::uint32_t& displayCount) override {
        displayCount = 2;
        for (std::size_t index = 0; index < activeDisplays.size() && index < displayCount; ++index) {
            activeDisplays[index] = static_cast<CGDirectDisplayID>(index) + 1;
        }
        return 0;
    }
    CGRect CGDisplayBounds(CGDirectDisplayID display) override {
        return display == 1 ? CGRect{{0, 0}, {1512, 982}} : CGRect{{-1024, 100}, {1024, 768}};
    }
};

/// A hand moves it a little after each jump.
class Pointer final : public PointerReader, public PointerWarper {
  public:
    std::optional<CGEvent> CGEventCreate() override { return CGEvent{location_}; }
    CGPoint CGEventGetLocation(const CGEvent& event) override { return event.location; }
    void CGWarpMouseCursorPosition(CGPoint position) override {
        location_ = {position.x + 1, position.y - 1};
        ++warps_;
    }
    void CGAssociateMouseAndMouseCursorPosition(bool /*connected*/) override {}

    [[nodiscard]] int warps() const { return warps_; }

  private:
    CGPoint location_{700, 500};
    int warps_ = 0;
};

}  // namespace

/// What is counted: a press as the platform reports it, and the turn of the loop that acts on it. A function of its
/// own, known to the outside by its name.
extern "C" __attribute__((noinline, used)) void vantrelCountedJump(fake::FakeHotKeys& hotKeys);

void vantrelCountedJump(fake::FakeHotKeys& hotKeys) {
    hotKeys.deliverPress({vantrelHotKeySignature, static_cast<std::uint32_t>(HotKeyAction::primary)});
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
}

namespace {

int run(const std::filesystem::path& directory, int jumps) {
    desktop::SQLiteUserDefaults defaults(directory / "vantrel" / "defaults.sqlite3");
    defaults.setObject(std::string("none"), "animation");
    defaults.setBool(false, "soundEnabled");
    TwoDisplays displays;
    Pointer pointer;
    desktop::GLibMainQueue mainQueue;
    fake::FakePlatform fakes;
    const Platform platform{fakes.application,
                            displays,
                            pointer,
                            pointer,
                            fakes.hotKeys,
                            mainQueue,
                            fakes.mainQueue,
                            defaults,
                            fakes.statusBar,
                            fakes.sounds,
                            fakes.uuids,
                            fakes.urls,
                            fakes.preferencesWindowViews};
    const auto controller = AppDelegate::create(platform, vantrelHotKeySignature, AppDelegate::hotKeyPressed);
    controller->applicationDidFinishLaunching();
    for (int jump = 0; jump < jumps; ++jump) {
        vantrelCountedJump(fakes.hotKeys);
    }
    controller->applicationWillTerminate();
    if (pointer.warps() != jumps) {
        std::fprintf(stderr, "%d of %d presses moved the pointer\n", pointer.warps(), jumps);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    const int jumps = count == 3 ? std::atoi(arguments[2]) : 0;
    if (jumps < 1) {
        std::fprintf(stderr, "usage: %s DIRECTORY JUMPS\n", arguments[0]);
        return 2;
    }
    return vantrel::bench::run(arguments[1], jumps);
}
