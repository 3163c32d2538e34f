#pragma once

#include <functional>
#include <optional>

#include "helpers/messages/Rect.hpp"
#include "helpers/messages/Wayland/Keyboard.hpp"

namespace vantrel::overlay {

/// What a person does with pointer and keyboard on surfaces of ours.
class Seat {
  public:
    struct Events {
        /// Also while it moves. Without a surface the pointer has left.
        std::function<void(wl_surface* surface, Point onSurface)> pointed;
        /// The pointer has come to the surface, after that was told: its cursor is to be set, with the serial.
        std::function<void(wl_pointer& pointer, std::uint32_t serial, wl_surface* surface)> entered;
        std::function<void(bool isPressed)> button;  ///< a real one, not the wheel
        Keyboard::Pressed key;
    };

    /// The first seat; its devices are there when the compositor has answered.
    Seat(const Compositor& compositor, Events events);
    Seat(const Seat&) = delete;
    Seat& operator=(const Seat&) = delete;

    /// Whether anything can be done with it.
    [[nodiscard]] bool hasDevice() const { return pointer_ || keyboard_; }

    [[nodiscard]] std::optional<Keyboard::Clock::time_point> nextRepeat() const {
        return keyboard_ ? keyboard_->nextRepeat() : std::nullopt;
    }
    void repeatKey() { keyboard_->repeat(); }

  private:
    struct Callbacks;

    void pointAt(wl_surface* surface, wl_fixed_t x, wl_fixed_t y);

    Events events_;
    Handle<wl_seat> seat_;
    Handle<wl_pointer> pointer_;
    std::unique_ptr<Keyboard> keyboard_;
    wl_surface* pointed_ = nullptr;
};

}  // namespace vantrel::overlay
