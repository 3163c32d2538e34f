#include "helpers/messages/X11/InputGrab.hpp"

#include <string_view>

namespace vantrel::overlay {

namespace {

constexpr std::uint16_t arrowGlyph = 68;  // XC_left_ptr of the server's cursor font, its mask the next one
constexpr std::uint16_t pointerEvents =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;

}  // namespace

InputGrab::InputGrab(const Screen& screen)
    : screen_(screen),
      cursorFont_(xcb_generate_id(screen.connection())),
      cursor_(xcb_generate_id(screen.connection())) {
    constexpr std::string_view fontName = "cursor";
    constexpr std::uint16_t full = 0xFFFF;
    xcb_open_font(screen.connection(), cursorFont_, fontName.size(), fontName.data());
    xcb_create_glyph_cursor(screen.connection(), cursor_, cursorFont_, cursorFont_, arrowGlyph, arrowGlyph + 1, 0, 0, 0,
                            full, full, full);
}

InputGrab::~InputGrab() {
    xcb_ungrab_keyboard(screen_.connection(), XCB_CURRENT_TIME);
    xcb_ungrab_pointer(screen_.connection(), XCB_CURRENT_TIME);
    xcb_free_cursor(screen_.connection(), cursor_);
    xcb_close_font(screen_.connection(), cursorFont_);
}

bool InputGrab::take() {
    xcb_connection_t* connection = screen_.connection();
    if (!hasPointer_) {
        const auto reply = x11::adopt(
            xcb_grab_pointer_reply(connection,
                                   xcb_grab_pointer(connection, 0, screen_.root(), pointerEvents, XCB_GRAB_MODE_ASYNC,
                                                    XCB_GRAB_MODE_ASYNC, XCB_NONE, cursor_, XCB_CURRENT_TIME),
                                   nullptr));
        hasPointer_ = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }
    if (!hasKeyboard_) {
        const auto reply =
            x11::adopt(xcb_grab_keyboard_reply(connection,
                                               xcb_grab_keyboard(connection, 0, screen_.root(), XCB_CURRENT_TIME,
                                                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                               nullptr));
        hasKeyboard_ = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }
    return hasPointer_ && hasKeyboard_;
}

}  // namespace vantrel::overlay
