#pragma once

#include <string_view>
#include <vector>

#include "tests/desk/wayland/support/LayoutPoint.hpp"

namespace vantrel::desk {

/// What a display takes up of a compositor's layout, in points.
struct LayoutArea {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] bool contains(LayoutPoint point) const {
        return point.x >= x && point.x < x + width && point.y >= y && point.y < y + height;
    }

    bool operator==(const LayoutArea&) const = default;
};

/// A person's hands on a keyboard and a mouse, in the manner that a compositor offers. What they do is sent with the
/// next request that waits for the compositor, or when the connection is flushed.
class Hands {
  public:
    Hands() = default;
    virtual ~Hands() = default;
    Hands(const Hands&) = delete;
    Hands& operator=(const Hands&) = delete;

    /// Presses or lets go of the key at the place that XKB names so, such as "AC03". Throws when there is none.
    virtual void key(std::string_view name, bool isDown) = 0;
    /// Makes the layout of that number, from 0 on, the active one.
    virtual void chooseLayout(unsigned number) = 0;
    /// Moves the pointer, in a layout of these displays.
    virtual void moveTo(LayoutPoint point, const std::vector<LayoutArea>& displays) = 0;
    /// Presses or lets go of the left button.
    virtual void button(bool isDown) = 0;

  protected:
    static constexpr unsigned leftButton = 0x110;
};

}  // namespace vantrel::desk
