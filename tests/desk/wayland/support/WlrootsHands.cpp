#include "tests/desk/wayland/support/WlrootsHands.hpp"

#include <algorithm>
#include <cmath>

#include "tests/desk/wayland/support/WaylandClient.hpp"

namespace vantrel::desk {

WlrootsHands::WlrootsHands(zwlr_virtual_pointer_manager_v1& pointers, zwp_virtual_keyboard_manager_v1& keyboards,
                           wl_seat& seat, const KeyboardMap& map)
    : map_(map),
      state_(xkb_state_new(map.get())),
      mouse_(zwlr_virtual_pointer_manager_v1_create_virtual_pointer(&pointers, &seat)),
      keyboard_(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(&keyboards, &seat)) {
    const std::string text = map.text();
    const std::string_view terminated(text.c_str(), text.size() + 1);
    zwp_virtual_keyboard_v1_keymap(keyboard_.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, memoryFile(terminated).get(),
                                   static_cast<std::uint32_t>(terminated.size()));
}

void WlrootsHands::key(std::string_view name, bool isDown) {
    const xkb_keycode_t keycode = map_.keycode(name);
    zwp_virtual_keyboard_v1_key(keyboard_.get(), ++time_, KeyboardMap::kernelCode(keycode), isDown ? 1 : 0);
    xkb_state_update_key(state_.get(), keycode, isDown ? XKB_KEY_DOWN : XKB_KEY_UP);
    sendModifiers();
}

void WlrootsHands::sendModifiers() {
    zwp_virtual_keyboard_v1_modifiers(keyboard_.get(), xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_DEPRESSED),
                                      xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_LATCHED),
                                      xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_LOCKED),
                                      xkb_state_serialize_layout(state_.get(), XKB_STATE_LAYOUT_EFFECTIVE));
}

void WlrootsHands::chooseLayout(unsigned number) {
    xkb_state_update_mask(state_.get(), 0, 0, xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_LOCKED), 0, 0,
                          number);
    sendModifiers();
}

void WlrootsHands::moveTo(LayoutPoint point, const std::vector<LayoutArea>& displays) {
    int left = displays.front().x;
    int top = displays.front().y;
    int right = left;
    int bottom = top;
    for (const LayoutArea& display : displays) {
        left = std::min(left, display.x);
        top = std::min(top, display.y);
        right = std::max(right, display.x + display.width);
        bottom = std::max(bottom, display.y + display.height);
    }
    constexpr int parts = 256;  // of a point, as many as the protocol tells of
    zwlr_virtual_pointer_v1_motion_absolute(
        mouse_.get(), ++time_, static_cast<std::uint32_t>(std::lround((point.x - left) * parts)),
        static_cast<std::uint32_t>(std::lround((point.y - top) * parts)),
        static_cast<std::uint32_t>((right - left) * parts), static_cast<std::uint32_t>((bottom - top) * parts));
    zwlr_virtual_pointer_v1_frame(mouse_.get());
}

void WlrootsHands::button(bool isDown) {
    zwlr_virtual_pointer_v1_button(mouse_.get(), ++time_, leftButton,
                                   isDown ? WL_POINTER_BUTTON_STATE_PRESSED : WL_POINTER_BUTTON_STATE_RELEASED);
    zwlr_virtual_pointer_v1_frame(mouse_.get());
}

}  // namespace vantrel::desk
