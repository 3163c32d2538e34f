// Shows the agent at work on a private desk: real server, real keys, real moves. Exits with 1 when the pointer is not
// where it should be.
#include <cstdio>
#include <exception>
#include <memory>
#include <sstream>
#include <string>

#include "tests/desk/support/KeyGrab.hpp"
#include "tests/desk/tour/Canvas.hpp"
#include "tests/desk/tour/PressTimer.hpp"

namespace vantrel::desk {
namespace {

std::string textOf(MainPoint point) {
    std::ostringstream text;
    text << '(' << point.x << ", " << point.y << ')';
    return text.str();
}

std::string textOf(const MainRect& bounds) {
    std::ostringstream text;
    text << bounds.width << " x " << bounds.height << " at " << textOf(MainPoint{.x = bounds.x, .y = bounds.y});
    return text.str();
}

struct Press {
    const char* title;
    std::string keys;  ///< in xdotool's writing
    std::string_view lastKey;
    MainPoint expected;
};

class Tour {
  public:
    explicit Tour(std::filesystem::path screenshot) : screenshot_(std::move(screenshot)), timer_(desk_) {}

    /// Returns whether the pointer went where it should each time.
    bool walk() {
        showLayout();
        const auto started = std::chrono::steady_clock::now();
        const auto agent = desk_.startAgent();
        const std::chrono::duration<double, std::milli> startTime = std::chrono::steady_clock::now() - started;
        std::printf("agent    running as process %d, hot keys ready after %.0f ms\n\n", agent->processId(),
                    startTime.count());

        const MainPoint start{.x = 700, .y = 500};
        desk_.pointer().moveTo(start);
        canvas_.drawStop(start, "start " + textOf(start));
        const std::string hyper = "ctrl+alt+shift+super+";
        const std::string withoutShift = "ctrl+alt+super+";
        const MainPoint centre{.x = -512, .y = 484};
        bool isRight = true;
        for (const Press& press :
             {Press{"Hyper + D", hyper + "d", keys::d, centre}, Press{"Hyper + D", hyper + "d", keys::d, start},
              Press{"Ctrl + Option + Command + Left Arrow", withoutShift + "Left", keys::leftArrow, centre},
              Press{"Ctrl + Option + Command + D", withoutShift + "d", keys::d, centre}}) {
            isRight = show(press) && isRight;
        }
        desk_.saveScreenshot(screenshot_);
        std::printf("\nscreenshot  %s\n", screenshot_.c_str());
        return isRight;
    }

  private:
    void showLayout() {
        const char* titles[] = {"main display", "second display"};
        std::printf("desk     X server %s (Xorg, dummy driver), private; Hyper = Ctrl + Alt + Shift + Super\n",
                    desk_.server().displayName().c_str());
        std::size_t index = 0;
        for (const auto& display : DisplayLayout::twoDisplays()) {
            std::printf("         %-15s %s\n", titles[index], textOf(display.bounds).c_str());
            canvas_.drawDisplay(display.bounds, std::string(titles[index]) + "  " + textOf(display.bounds));
            ++index;
        }
    }

    bool show(const Press& press) {
        const auto outcome = timer_.press(press.keys, press.lastKey);
        std::printf("%-37s %12s -> %-12s", press.title, textOf(outcome.from).c_str(), textOf(outcome.to).c_str());
        if (outcome.latency) {
            std::printf(" in %.2f ms", outcome.latency->count());
            canvas_.drawMove(outcome.from, outcome.to);
            canvas_.drawStop(outcome.to, std::string(press.title) + " " + textOf(outcome.to));
        } else {
            std::printf(" stays");
        }
        const bool isRight = outcome.to == press.expected;
        std::printf("%s\n", isRight ? "" : ("  WRONG: expected " + textOf(press.expected)).c_str());
        return isRight;
    }

    std::filesystem::path screenshot_;
    Desk desk_{{.hasSessionBus = true, .hasWindowManager = true}};
    Canvas canvas_{desk_.connection(), desk_.layout()};
    PressTimer timer_;
};

}  // namespace
}  // namespace vantrel::desk

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::fprintf(stderr, "usage: %s SCREENSHOT.png\n", arguments[0]);
        return 2;
    }
    try {
        return vantrel::desk::Tour(arguments[1]).walk() ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
