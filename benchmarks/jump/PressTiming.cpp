#include "benchmarks/jump/PressTiming.hpp"

#include <xcb/xtest.h>

#include <algorithm>
#include <cmath>
#include <thread>
#include <utility>

namespace vantrel::bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds lostAfter{500};
/// People do not press faster, and whatever a press leaves to be done is done by then.
constexpr std::chrono::microseconds pause{1500};
constexpr int uncountedPresses = 10;

void sendKey(desk::XConnection& connection, std::uint8_t type, xcb_keycode_t keycode) {
    xcb_test_fake_input(connection.get(), type, keycode, XCB_CURRENT_TIME, connection.root(), 0, 0, 0);
    xcb_flush(connection.get());
}

}  // namespace

Microseconds PressTimes::percentile(double share) const {
    if (times.empty()) {
        return Microseconds{0};
    }
    std::vector<Microseconds> sorted = times;
    std::sort(sorted.begin(), sorted.end());
    const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(sorted.size())));
    return sorted[std::clamp<std::size_t>(rank, 1, sorted.size()) - 1];
}

void PressTimes::add(const PressTimes& other) {
    times.insert(times.end(), other.times.begin(), other.times.end());
    lost += other.lost;
}

PressTimes timePresses(desk::Desk& desk, desk::MainPoint first, desk::MainPoint second, int presses) {
    PressTimes result;
    desk::Keyboard& keyboard = desk.keyboard();
    const xcb_keycode_t key = keyboard.keycode(desk::keys::d);
    keyboard.hold({desk::keys::control, desk::keys::option, desk::keys::shift, desk::keys::command});
    desk.connection().synchronise();
    desk::MainPoint here = first;
    desk::MainPoint there = second;
    for (int press = -uncountedPresses; press < presses; ++press) {
        here.x += press % 2 == 0 ? 1 : -1;
        here.y += press % 3 - 1;
        desk.pointer().moveTo(here);
        const Clock::time_point begin = Clock::now();
        sendKey(desk.connection(), XCB_KEY_PRESS, key);
        bool hasArrived = false;
        Clock::time_point now = begin;
        while (!hasArrived && now - begin < lostAfter) {
            hasArrived = desk.pointer().position() == there;
            now = Clock::now();
        }
        sendKey(desk.connection(), XCB_KEY_RELEASE, key);
        if (!hasArrived) {
            ++result.lost;
        } else if (press >= 0) {
            result.times.emplace_back(now - begin);
        }
        std::swap(here, there);
        std::this_thread::sleep_for(pause);
    }
    keyboard.letGo();
    desk.connection().synchronise();
    return result;
}

}  // namespace vantrel::bench
