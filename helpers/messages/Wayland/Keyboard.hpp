#pragma once

#include <xkbcommon/xkbcommon.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <span>

#include "helpers/messages/Wayland/Compositor.hpp"

namespace vantrel::overlay {

/// A seat's keyboard, with the compositor's map of it. A compositor leaves the repeats of a held key to its clients.
class Keyboard {
  public:
    using Clock = std::chrono::steady_clock;
    /// `keysyms` are what the key gives without modifiers, in each layout.
    using Pressed = std::function<void(std::span<const std::uint32_t> keysyms, bool isControlHeld)>;

    Keyboard(wl_seat& seat, Pressed pressed);
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    /// When a held key is due again; none while it is not.
    [[nodiscard]] std::optional<Clock::time_point> nextRepeat() const { return nextRepeat_; }
    void repeat();

  private:
    struct Callbacks;
    struct XkbDeleter {
        void operator()(xkb_context* context) const { xkb_context_unref(context); }
        void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
        void operator()(xkb_state* state) const { xkb_state_unref(state); }
    };

    void setKeymap(const std::string& text);
    void press(xkb_keycode_t key);
    void release(xkb_keycode_t key);

    Pressed pressed_;
    Handle<wl_keyboard> keyboard_;
    std::unique_ptr<xkb_context, XkbDeleter> context_;
    std::unique_ptr<xkb_keymap, XkbDeleter> keymap_;
    std::unique_ptr<xkb_state, XkbDeleter> state_;
    Clock::duration repeatDelay_{};
    Clock::duration repeatInterval_{};  ///< zero for no repeats
    xkb_keycode_t repeatedKey_ = XKB_KEYCODE_INVALID;
    std::optional<Clock::time_point> nextRepeat_;
};

}  // namespace vantrel::overlay
