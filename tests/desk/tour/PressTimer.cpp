#include "tests/desk/tour/PressTimer.hpp"

namespace vantrel::desk {

PressOutcome PressTimer::press(const std::string& keys, std::string_view lastKey) {
    using Clock = std::chrono::steady_clock;
    const auto keycode = desk_.keyboard().keycode(lastKey);
    const auto isDown = [&](const xcb_query_keymap_reply_t& reply) {
        return (reply.keys[keycode / 8U] & (1U << (keycode % 8U))) != 0;
    };
    PressOutcome outcome{.from = desk_.pointer().position(), .to = {}, .latency = std::nullopt};

    // Held for a moment, so that the key is seen down however fast the agent is.
    ChildProcessOptions options;
    options.arguments = {"xdotool", "keydown", keys, "sleep", "0.05", "keyup", keys};
    options.environment = desk_.environment();
    ChildProcess xdotool(options);

    std::optional<Clock::time_point> pressed;
    auto lastSeenUp = Clock::now();
    while (xdotool.isRunning()) {
        const auto pointerCookie = xcb_query_pointer(connection_.get(), connection_.root());
        const auto keymapCookie = xcb_query_keymap(connection_.get());
        const auto asked = Clock::now();
        const XReply<xcb_query_pointer_reply_t> pointer(
            xcb_query_pointer_reply(connection_.get(), pointerCookie, nullptr));
        const XReply<xcb_query_keymap_reply_t> keymap(xcb_query_keymap_reply(connection_.get(), keymapCookie, nullptr));
        if (!pointer || !keymap) {
            break;
        }
        if (!pressed && isDown(*keymap)) {
            pressed = lastSeenUp;
        }
        lastSeenUp = asked;
        const auto position = desk_.layout().toMain({.x = pointer->root_x, .y = pointer->root_y});
        if (pressed && !outcome.latency && position != outcome.from) {
            outcome.latency = Clock::now() - *pressed;
        }
    }
    outcome.to = desk_.pointer().position();
    return outcome;
}

}  // namespace vantrel::desk
