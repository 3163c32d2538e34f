#pragma once

#include <string>

#include "Vantrel/Backends/Wayland/OutputLayout.hpp"
#include "Vantrel/Backends/Wayland/Registry.hpp"

namespace vantrel::wayland {

/// The first seat, and where its pointer entered a surface of ours last.
class Seat {
  public:
    /// The version that has all that is needed here.
    static constexpr std::uint32_t version = 5;

    struct Entry {
        wl_surface* surface = nullptr;  ///< none since forgetEntry()
        LayoutPoint onSurface;          ///< in the surface's coordinates
    };

    /// The registry offers a seat.
    explicit Seat(const Registry& registry);
    Seat(const Seat&) = delete;
    Seat& operator=(const Seat&) = delete;

    [[nodiscard]] wl_seat* get() const { return seat_.get(); }
    [[nodiscard]] const std::string& name() const { return name_; }

    /// Without any pointing device a seat has no pointer; null then.
    [[nodiscard]] wl_pointer* pointer() const { return pointer_.get(); }
    [[nodiscard]] bool hasPointer() const { return pointer_ != nullptr; }
    [[nodiscard]] bool hasKeyboard() const { return hasKeyboard_; }

    [[nodiscard]] const Entry& entry() const { return entry_; }
    void forgetEntry() { entry_ = {}; }

  private:
    struct Callbacks;

    WaylandPointer<wl_seat> seat_;
    WaylandPointer<wl_pointer> pointer_;
    std::string name_;
    bool hasKeyboard_ = false;
    Entry entry_;
};

}  // namespace vantrel::wayland
