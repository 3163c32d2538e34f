#include "helpers/messages/Wayland/Keyboard.hpp"

#include <unistd.h>

#include <string>
#include <utility>
#include <vector>

#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel::overlay {

namespace {

constexpr xkb_keycode_t evdevToXkb = 8;
constexpr std::uint32_t largestKeymap = 16U * 1024 * 1024;  // beyond that it is none

}  // namespace

struct Keyboard::Callbacks {
    static Keyboard& self(void* data) { return *static_cast<Keyboard*>(data); }

    static void keymap(void* data, wl_keyboard* /*keyboard*/, std::uint32_t format, std::int32_t descriptor,
                       std::uint32_t size) {
        const FileDescriptor file(descriptor);
        std::string text(size <= largestKeymap ? size : 0, '\0');
        if (format != WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 || pread(file.get(), text.data(), text.size(), 0) <= 0) {
            return;
        }
        self(data).setKeymap(text.substr(0, text.find('\0')));
    }
    static void leave(void* data, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/, wl_surface* /*surface*/) {
        self(data).nextRepeat_.reset();
    }
    static void key(void* data, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/, std::uint32_t /*time*/,
                    std::uint32_t key, std::uint32_t state) {
        if (state == WL_KEYBOARD_KEY_STATE_PRESSED) {
            self(data).press(key + evdevToXkb);
        } else if (state == WL_KEYBOARD_KEY_STATE_RELEASED) {
            self(data).release(key + evdevToXkb);
        }
    }
    static void modifiers(void* data, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/, std::uint32_t depressed,
                          std::uint32_t latched, std::uint32_t locked, std::uint32_t layout) {
        if (self(data).state_) {
            xkb_state_update_mask(self(data).state_.get(), depressed, latched, locked, 0, 0, layout);
        }
    }
    static void repeatInfo(void* data, wl_keyboard* /*keyboard*/, std::int32_t rate, std::int32_t delay) {
        self(data).repeatDelay_ = std::chrono::milliseconds(delay);
        self(data).repeatInterval_ =
            rate > 0 ? std::chrono::nanoseconds(std::chrono::seconds(1)) / rate : std::chrono::nanoseconds::zero();
    }

    template <typename... Arguments>
    static void unused(void* /*data*/, Arguments... /*arguments*/) {}

    static constexpr wl_keyboard_listener keyboard{.keymap = keymap,
                                                   .enter = unused,
                                                   .leave = leave,
                                                   .key = key,
                                                   .modifiers = modifiers,
                                                   .repeat_info = repeatInfo};
};

Keyboard::Keyboard(wl_seat& seat, Pressed pressed)
    : pressed_(std::move(pressed)),
      keyboard_(wl_seat_get_keyboard(&seat)),
      context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    wl_keyboard_add_listener(keyboard_.get(), &Callbacks::keyboard, this);
}

void Keyboard::setKeymap(const std::string& text) {
    state_.reset();
    keymap_.reset(context_ ? xkb_keymap_new_from_string(context_.get(), text.c_str(), XKB_KEYMAP_FORMAT_TEXT_V1,
                                                        XKB_KEYMAP_COMPILE_NO_FLAGS)
                           : nullptr);
    if (keymap_) {
        state_.reset(xkb_state_new(keymap_.get()));
    }
}

void Keyboard::press(xkb_keycode_t key) {
    if (!state_) {
        return;
    }
    nextRepeat_.reset();
    if (repeatInterval_ > Clock::duration::zero() && xkb_keymap_key_repeats(keymap_.get(), key) != 0) {
        repeatedKey_ = key;
        nextRepeat_ = Clock::now() + repeatDelay_;
    }
    std::vector<std::uint32_t> keysyms;
    for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts_for_key(keymap_.get(), key); ++layout) {
        const xkb_keysym_t* found = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(keymap_.get(), key, layout, 0, &found);
        keysyms.push_back(count > 0 ? *found : XKB_KEY_NoSymbol);
    }
    const bool isControlHeld =
        xkb_state_mod_name_is_active(state_.get(), XKB_MOD_NAME_CTRL, XKB_STATE_MODS_EFFECTIVE) > 0;
    pressed_(keysyms, isControlHeld);
}

void Keyboard::release(xkb_keycode_t key) {
    if (key == repeatedKey_) {
        nextRepeat_.reset();
    }
}

void Keyboard::repeat() {
    press(repeatedKey_);
    if (nextRepeat_) {
        nextRepeat_ = Clock::now() + repeatInterval_;
    }
}

}  // namespace vantrel::overlay
