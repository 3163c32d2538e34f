#include "Vantrel/Backends/X11/AgentSelection.hpp"

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "Vantrel/Handles/TextPieces.hpp"

namespace vantrel::x11 {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds receiptDeadline{5};
constexpr std::size_t chunkBytes = std::size_t{64} * 1024;  // below the length limit of requests on every server
constexpr std::uint32_t mostBytes = 16U * 1024 * 1024;      // far beyond what a command line holds
constexpr std::uint8_t formatBytes = 8;                     // a property of single bytes

}  // namespace

AgentSelection::AgentSelection(X11Connection& connection)
    : connection_(connection), selection_(connection.atom("_VANTREL_AGENT")), urls_(connection.atom("_VANTREL_URLS")) {
    connection_.addListener(*this);
}

xcb_window_t AgentSelection::makeWindow(std::uint32_t eventMask) {
    const xcb_window_t window = xcb_generate_id(connection_.get());
    xcb_create_window(connection_.get(), 0, window, connection_.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &eventMask);
    return window;
}

bool AgentSelection::claim() {
    // The grab makes looking and taking one step, so that of two starts at the same moment one wins.
    xcb_grab_server(connection_.get());
    const bool isFree = selectionOwner(connection_.get(), selection_) == XCB_NONE;
    if (isFree) {
        window_ = makeWindow(XCB_EVENT_MASK_NO_EVENT);
        xcb_set_selection_owner(connection_.get(), window_, selection_, XCB_CURRENT_TIME);
    }
    xcb_ungrab_server(connection_.get());
    xcb_flush(connection_.get());
    return isFree && !connection_.isLost();
}

bool AgentSelection::send(const std::vector<std::string>& urls) {
    const xcb_window_t agent = selectionOwner(connection_.get(), selection_);
    if (agent == XCB_NONE) {
        return false;
    }
    std::string text;
    for (const std::string& url : urls) {
        text += url;
        text += '\0';
    }
    const xcb_window_t window = makeWindow(XCB_EVENT_MASK_PROPERTY_CHANGE);
    std::size_t sent = 0;
    do {
        const std::size_t length = std::min(chunkBytes, text.size() - sent);
        xcb_change_property(connection_.get(), XCB_PROP_MODE_APPEND, window, urls_, XCB_ATOM_STRING, formatBytes,
                            static_cast<std::uint32_t>(length), text.data() + sent);
        sent += length;
    } while (sent < text.size());

    sendClientMessage(connection_.get(), agent, XCB_EVENT_MASK_NO_EVENT, agent, urls_, {window});
    xcb_flush(connection_.get());
    return waitForReceipt(window);
}

bool AgentSelection::waitForReceipt(xcb_window_t window) {
    const Clock::time_point deadline = Clock::now() + receiptDeadline;
    while (!connection_.isLost()) {
        while (const auto event = adopt(xcb_poll_for_event(connection_.get()))) {
            if ((event->response_type & 0x7FU) != XCB_PROPERTY_NOTIFY) {
                continue;
            }
            const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
            if (notify.window == window && notify.atom == urls_ && notify.state == XCB_PROPERTY_DELETE) {
                return true;
            }
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) {
            return false;
        }
        pollfd descriptor{xcb_get_file_descriptor(connection_.get()), POLLIN, 0};
        poll(&descriptor, 1, static_cast<int>(left));
    }
    return false;
}

void AgentSelection::handleEvent(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7FU) != XCB_CLIENT_MESSAGE) {
        return;
    }
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (window_ != XCB_NONE && message.window == window_ && message.type == urls_ && message.format == 32) {
        receive(message.data.data32[0]);
    }
}

void AgentSelection::receive(xcb_window_t window) {
    const auto cookie =
        xcb_get_property(connection_.get(), 1, window, urls_, XCB_ATOM_STRING, 0, mostBytes / sizeof(std::uint32_t));
    const auto reply = adopt(xcb_get_property_reply(connection_.get(), cookie, nullptr));
    xcb_flush(connection_.get());
    // What does not fit is not deleted by the server either, so the starter sees no receipt.
    if (!reply || reply->type != XCB_ATOM_STRING || reply->format != formatBytes || reply->bytes_after != 0) {
        return;
    }
    const auto* text = static_cast<const char*>(xcb_get_property_value(reply.get()));
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    if (opened_) {
        opened_(piecesOf({text, length}, '\0'));
    }
}

}  // namespace vantrel::x11
