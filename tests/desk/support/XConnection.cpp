#include "tests/desk/support/XConnection.hpp"

#include <stdexcept>

namespace vantrel::desk {

XConnection::XConnection(const std::string& displayName) : connection_(xcb_connect(displayName.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) {
        xcb_disconnect(connection_);
        throw std::runtime_error("cannot connect to the X server " + displayName);
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
}

void XConnection::synchronise() {
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

}  // namespace vantrel::desk
