#pragma once

#include <wayland-client.h>

#include <cstdint>
#include <functional>

namespace vantrel::bench {

/// The bare means of reading the pointer on a compositor with layer-shell: a transparent surface over each of two
/// outputs, until one is entered. It knows no errors.
class FloorPointer {
  public:
    /// Connects to the display that WAYLAND_DISPLAY names. `bind` is told of each global, to bind more of them.
    using Bind = void (*)(wl_registry* registry, std::uint32_t name, const char* interface);
    explicit FloorPointer(Bind bind = nullptr);

    [[nodiscard]] wl_display* display() const;

    struct Place {
        double x;
        double y;
    };
    /// `stir` has the compositor look what lies under the pointer, which not all do by themselves.
    Place read(const std::function<void()>& stir);
};

}  // namespace vantrel::bench
