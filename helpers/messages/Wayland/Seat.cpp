#include "helpers/messages/Wayland/Seat.hpp"

#include <linux/input-event-codes.h>

#include <utility>

namespace vantrel::overlay {

struct Seat::Callbacks {
    static Seat& self(void* data) { return *static_cast<Seat*>(data); }

    static void capabilities(void* data, wl_seat* seat, std::uint32_t available) {
        Seat& own = self(data);
        const bool hasPointer = (available & WL_SEAT_CAPABILITY_POINTER) != 0;
        if (hasPointer != static_cast<bool>(own.pointer_)) {
            own.pointer_.reset(hasPointer ? wl_seat_get_pointer(seat) : nullptr);
            if (hasPointer) {
                wl_pointer_add_listener(own.pointer_.get(), &pointer, data);
            }
        }
        const bool hasKeyboard = (available & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
        if (hasKeyboard != static_cast<bool>(own.keyboard_)) {
            own.keyboard_ = hasKeyboard ? std::make_unique<Keyboard>(*seat, own.events_.key) : nullptr;
        }
    }

    static void enter(void* data, wl_pointer* device, std::uint32_t serial, wl_surface* surface, wl_fixed_t x,
                      wl_fixed_t y) {
        self(data).pointAt(surface, x, y);
        self(data).events_.entered(*device, serial, surface);
    }
    static void leave(void* data, wl_pointer* /*device*/, std::uint32_t /*serial*/, wl_surface* /*surface*/) {
        self(data).pointAt(nullptr, 0, 0);
    }
    static void motion(void* data, wl_pointer* /*device*/, std::uint32_t /*time*/, wl_fixed_t x, wl_fixed_t y) {
        self(data).pointAt(self(data).pointed_, x, y);
    }
    static void button(void* data, wl_pointer* /*device*/, std::uint32_t /*serial*/, std::uint32_t /*time*/,
                       std::uint32_t which, std::uint32_t state) {
        if (which >= BTN_LEFT && which <= BTN_MIDDLE) {
            self(data).events_.button(state == WL_POINTER_BUTTON_STATE_PRESSED);
        }
    }

    template <typename... Arguments>
    static void unused(void* /*data*/, Arguments... /*arguments*/) {}

    static constexpr wl_seat_listener seatListener{.capabilities = capabilities, .name = unused};
    // Newer libraries know of more events, which a pointer of this version never sends.
    static constexpr wl_pointer_listener pointer = [] {
        wl_pointer_listener listener{};
        listener.enter = enter;
        listener.leave = leave;
        listener.motion = motion;
        listener.button = button;
        listener.axis = unused;
        listener.frame = unused;
        listener.axis_source = unused;
        listener.axis_stop = unused;
        listener.axis_discrete = unused;
        return listener;
    }();
};

Seat::Seat(const Compositor& compositor, Events events) : events_(std::move(events)), seat_(compositor.bindSeat()) {
    if (seat_) {
        wl_seat_add_listener(seat_.get(), &Callbacks::seatListener, this);
    }
}

void Seat::pointAt(wl_surface* surface, wl_fixed_t x, wl_fixed_t y) {
    pointed_ = surface;
    // Rounded down, also left of or above the surface, where a pointer with a button held may be.
    constexpr int fractionBits = 8;
    events_.pointed(surface, {.x = x >> fractionBits, .y = y >> fractionBits});
}

}  // namespace vantrel::overlay
