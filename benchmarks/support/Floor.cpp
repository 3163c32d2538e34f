// The floor: a program of a few lines that grabs one key with fixed modifiers, and at each press asks where the pointer
// is, keeps that in mind for its side of a fixed line, and warps the pointer to where it last was on the other side. It
// knows no layout, stores nothing, and stops working with Caps Lock on. Arguments: the keycode, the modifier mask, the
// line, and the first point on its left, in root-window pixels.
#include <xcb/xcb.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

struct Position {
    std::int16_t x = 0;
    std::int16_t y = 0;
};

}  // namespace

int main(int count, char** arguments) {
    if (count != 6) {
        return 2;
    }
    const auto number = [arguments](int index) { return static_cast<std::int16_t>(std::atoi(arguments[index])); };
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        return 1;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_grab_key(connection, 0, root, static_cast<std::uint16_t>(number(2)), static_cast<std::uint8_t>(number(1)),
                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_flush(connection);
    std::array<Position, 2> remembered{Position{number(4), number(5)}, Position{}};
    while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{xcb_wait_for_event(connection),
                                                                                  &std::free}) {
        if ((event->response_type & 0x7F) != XCB_KEY_PRESS) {
            continue;
        }
        const std::unique_ptr<xcb_query_pointer_reply_t, decltype(&std::free)> pointer{
            xcb_query_pointer_reply(connection, xcb_query_pointer(connection, root), nullptr), &std::free};
        if (!pointer) {
            break;
        }
        const std::size_t side = pointer->root_x < number(3) ? 0 : 1;
        remembered[side] = {pointer->root_x, pointer->root_y};
        const Position target = remembered[1 - side];
        xcb_warp_pointer(connection, XCB_NONE, root, 0, 0, 0, 0, target.x, target.y);
        xcb_flush(connection);
    }
    xcb_disconnect(connection);
    return 0;
}
