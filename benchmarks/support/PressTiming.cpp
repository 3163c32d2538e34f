#include "benchmarks/support/PressTiming.hpp"

#include <xcb/xtest.h>

#include <cstddef>
#include <thread>
#include <utility>

#include "benchmarks/support/Statistics.hpp"

namespace vantrel::bench {

namespace {

using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

/// Longer than a busy machine holds anything up: what comes late is slow, and not lost.
constexpr std::chrono::milliseconds lostAfter{3000};

/// Before the server repeats the key, which some take for another press.
constexpr std::chrono::milliseconds longestHold{100};

void sendKey(desk::XConnection& connection, std::uint8_t type, xcb_keycode_t keycode) {
    xcb_test_fake_input(connection.get(), type, keycode, XCB_CURRENT_TIME, connection.root(), 0, 0, 0);
    xcb_flush(connection.get());
}

/// A pixel or two, to and fro, so that the stops stay where they are in a long series.
void nudge(desk::MainPoint& point, int visit) {
    point.x += visit % 2 == 0 ? 1 : -1;
    point.y += visit % 4 < 2 ? 1 : -1;
}

}  // namespace

double PressTimes::percentile(double share) const {
    return bench::percentile(times, share);
}

PressTimes timePresses(desk::Desk& desk, PressSeries series) {
    PressTimes result;
    desk::Keyboard& keyboard = desk.keyboard();
    const xcb_keycode_t key = keyboard.keycode(desk::keys::d);
    keyboard.hold({desk::keys::control, desk::keys::option, desk::keys::shift, desk::keys::command});
    desk.connection().synchronise();
    const auto stops = static_cast<int>(series.stops.size());
    for (int press = 0; press < series.uncountedPresses + series.presses; ++press) {
        desk::MainPoint& here = series.stops[static_cast<std::size_t>(press % stops)];
        const desk::MainPoint there = series.stops[static_cast<std::size_t>((press + 1) % stops)];
        nudge(here, press / stops);
        desk.pointer().moveTo(here);
        const Clock::time_point begin = Clock::now();
        sendKey(desk.connection(), XCB_KEY_PRESS, key);
        bool isHeld = true;
        bool hasArrived = false;
        Clock::time_point now = begin;
        while (!hasArrived && now - begin < lostAfter) {
            hasArrived = desk.pointer().position() == there;
            now = Clock::now();
            if (isHeld && (hasArrived || now - begin > longestHold)) {
                sendKey(desk.connection(), XCB_KEY_RELEASE, key);
                isHeld = false;
            }
        }
        if (press >= series.uncountedPresses) {
            if (series.pressed) {
                series.pressed(begin);
            }
            if (hasArrived) {
                result.times.push_back(Microseconds(now - begin).count());
            } else {
                ++result.lost;
            }
        } else if (!hasArrived) {
            ++result.lost;  // lost is lost
        }
        std::this_thread::sleep_for(series.pause);
    }
    keyboard.letGo();
    desk.connection().synchronise();
    result.stops = std::move(series.stops);
    return result;
}

}  // namespace vantrel::bench
