#include "Vantrel/Backends/Wayland/Seat.hpp"

namespace vantrel::wayland {

struct Seat::Callbacks {
    static Seat& seat(void* data) { return *static_cast<Seat*>(data); }

    static void capabilities(void* data, wl_seat* handle, std::uint32_t capabilities) {
        Seat& self = seat(data);
        self.hasKeyboard_ = (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
        const bool hasPointer = (capabilities & WL_SEAT_CAPABILITY_POINTER) != 0;
        if (hasPointer == self.hasPointer()) {
            return;
        }
        self.pointer_.reset(hasPointer ? wl_seat_get_pointer(handle) : nullptr);
        if (hasPointer) {
            wl_pointer_add_listener(self.pointer_.get(), &pointerListener, data);
        }
    }
    static void named(void* data, wl_seat* /*handle*/, const char* name) { seat(data).name_ = name; }

    static void enter(void* data, wl_pointer* /*pointer*/, std::uint32_t /*serial*/, wl_surface* surface, wl_fixed_t x,
                      wl_fixed_t y) {
        seat(data).entry_ = {surface, {wl_fixed_to_double(x), wl_fixed_to_double(y)}};
    }

    template <typename... Arguments>
    static void unused(void* /*data*/, Arguments... /*arguments*/) {}

    static constexpr wl_seat_listener seatListener{.capabilities = capabilities, .name = named};
    // Newer libraries know of more events, which a pointer of this version never sends.
    static constexpr wl_pointer_listener pointerListener = [] {
        wl_pointer_listener listener{};
        listener.enter = enter;
        listener.leave = unused;
        listener.motion = unused;
        listener.button = unused;
        listener.axis = unused;
        listener.frame = unused;
        listener.axis_source = unused;
        listener.axis_stop = unused;
        listener.axis_discrete = unused;
        return listener;
    }();
};

Seat::Seat(const Registry& registry) : seat_(registry.bindFirst<wl_seat>(wl_seat_interface, version)) {
    wl_seat_add_listener(seat_.get(), &Callbacks::seatListener, this);
}

}  // namespace vantrel::wayland
