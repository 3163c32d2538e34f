#pragma once

#include <virtual-keyboard-unstable-v1.h>
#include <wlr-virtual-pointer-unstable-v1.h>

#include <memory>

#include "tests/desk/wayland/support/Hands.hpp"
#include "tests/desk/wayland/support/KeyboardMap.hpp"

namespace vantrel::desk {

/// Hands on a virtual keyboard, with a map of its own, and a virtual pointer.
class WlrootsHands final : public Hands {
  public:
    WlrootsHands(zwlr_virtual_pointer_manager_v1& pointers, zwp_virtual_keyboard_manager_v1& keyboards, wl_seat& seat,
                 const KeyboardMap& map);

    void key(std::string_view name, bool isDown) override;
    void chooseLayout(unsigned number) override;
    void moveTo(LayoutPoint point, const std::vector<LayoutArea>& displays) override;
    void button(bool isDown) override;

  private:
    void sendModifiers();

    struct FreeState {
        void operator()(xkb_state* state) const { xkb_state_unref(state); }
    };
    struct End {
        void operator()(zwlr_virtual_pointer_v1* mouse) const { zwlr_virtual_pointer_v1_destroy(mouse); }
        void operator()(zwp_virtual_keyboard_v1* keyboard) const { zwp_virtual_keyboard_v1_destroy(keyboard); }
    };

    const KeyboardMap& map_;
    std::unique_ptr<xkb_state, FreeState> state_;
    std::unique_ptr<zwlr_virtual_pointer_v1, End> mouse_;
    std::unique_ptr<zwp_virtual_keyboard_v1, End> keyboard_;
    std::uint32_t time_ = 0;
};

}  // namespace vantrel::desk
