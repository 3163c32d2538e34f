#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace vantrel::desk {

/// The map of a keyboard with these layouts and options (see SeatClient).
class KeyboardMap {
  public:
    /// Throws when there is no such map.
    KeyboardMap(const std::string& layouts, const std::string& options);

    [[nodiscard]] xkb_keymap* get() const { return keymap_.get(); }
    /// The key at the place that XKB names so. Throws when there is none.
    [[nodiscard]] xkb_keycode_t keycode(std::string_view name) const;
    /// As compositors take it.
    [[nodiscard]] std::string text() const;

    /// The number that the kernel has for a key.
    static std::uint32_t kernelCode(xkb_keycode_t keycode) { return keycode - 8; }

  private:
    struct FreeKeymap {
        void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    };

    std::unique_ptr<xkb_keymap, FreeKeymap> keymap_;
};

}  // namespace vantrel::desk
