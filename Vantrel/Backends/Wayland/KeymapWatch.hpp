#pragma once

#include <functional>

#include "Vantrel/Backends/Wayland/Registry.hpp"

namespace vantrel::wayland {

/// Tells when the first seat's keyboard gets another map: the person has changed the layouts, or types on another
/// keyboard.
class KeymapWatch {
  public:
    /// `changed` is called while events are read, so it only notes; also for the first map.
    KeymapWatch(const Registry& registry, std::function<void()> changed);
    KeymapWatch(const KeymapWatch&) = delete;
    KeymapWatch& operator=(const KeymapWatch&) = delete;

  private:
    struct Callbacks;

    std::function<void()> changed_;
    /// A view of the seat beside that of whoever reads the pointer.
    WaylandPointer<wl_seat> seat_;
    WaylandPointer<wl_keyboard> keyboard_;
};

}  // namespace vantrel::wayland
