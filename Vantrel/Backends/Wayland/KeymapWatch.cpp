#include "Vantrel/Backends/Wayland/KeymapWatch.hpp"

#include <unistd.h>

#include <utility>

#include "Vantrel/Backends/Wayland/Seat.hpp"

namespace vantrel::wayland {

struct KeymapWatch::Callbacks {
    static void capabilities(void* data, wl_seat* handle, std::uint32_t capabilities) {
        auto& self = *static_cast<KeymapWatch*>(data);
        const bool hasKeyboard = (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
        if (hasKeyboard == (self.keyboard_ != nullptr)) {
            return;
        }
        self.keyboard_.reset(hasKeyboard ? wl_seat_get_keyboard(handle) : nullptr);
        if (hasKeyboard) {
            wl_keyboard_add_listener(self.keyboard_.get(), &keyboardListener, data);
        }
    }

    static void keymap(void* data, wl_keyboard* /*keyboard*/, std::uint32_t /*format*/, std::int32_t file,
                       std::uint32_t /*size*/) {
        close(file);
        static_cast<KeymapWatch*>(data)->changed_();
    }

    template <typename... Arguments>
    static void unused(void* /*data*/, Arguments... /*arguments*/) {}

    static constexpr wl_seat_listener seatListener{.capabilities = capabilities, .name = unused};
    static constexpr wl_keyboard_listener keyboardListener{
        .keymap = keymap, .enter = unused, .leave = unused, .key = unused, .modifiers = unused, .repeat_info = unused};
};

KeymapWatch::KeymapWatch(const Registry& registry, std::function<void()> changed)
    : changed_(std::move(changed)), seat_(registry.bindFirst<wl_seat>(wl_seat_interface, Seat::version)) {
    wl_seat_add_listener(seat_.get(), &Callbacks::seatListener, this);
}

}  // namespace vantrel::wayland
