#include "Vantrel/Backends/X11/X11Connection.hpp"

#include <xcb/randr.h>
#include <xcb/xinput.h>

#include <cstddef>
#include <cstdlib>
#include <utility>

#include "Vantrel/Backends/X11/XkbProtocol.hpp"

namespace vantrel::x11 {

namespace {

/// xcb reads 4 kB of the socket at once, and few events take more than a hundred bytes. Whether a read was full it does
/// not tell; where this is wrong, the next turn of the loop brings the rest.
constexpr std::size_t eventsOfAFullRead = 32;

std::string noDisplayMessage() {
    const char* display = std::getenv("DISPLAY");
    if (display == nullptr || *display == '\0') {
        return "no X display: DISPLAY is not set";
    }
    return std::string("cannot connect to the X display ") + display;
}

}  // namespace

std::unique_ptr<X11Connection> X11Connection::open(std::string& error) {
    // The constructor is private, so make_unique cannot reach it.
    std::unique_ptr<X11Connection> connection(new X11Connection);
    if (connection->isLost()) {
        error = noDisplayMessage();
        return nullptr;
    }
    connection->screen_ = screenOfNumber(connection->get(), connection->screenNumber_);
    if (connection->screen_ == nullptr) {
        error = "the X server has no screen";
        return nullptr;
    }
    return connection->startExtensions(error) ? std::move(connection) : nullptr;
}

bool X11Connection::startExtensions(std::string& error) {
    xcb_prefetch_extension_data(get(), &xcb_randr_id);
    xcb_prefetch_extension_data(get(), &xcb_input_id);
    xcb_prefetch_extension_data(get(), &xcb_xkb_id);

    const xcb_query_extension_reply_t* randr = xcb_get_extension_data(get(), &xcb_randr_id);
    xkbFirstEvent_ = x11::xkbFirstEvent(get());
    const xcb_query_extension_reply_t* xinput = xcb_get_extension_data(get(), &xcb_input_id);
    const bool hasXinput = xinput != nullptr && xinput->present != 0;
    if (randr == nullptr || randr->present == 0) {
        error = "the X server lacks the RandR extension";
        return false;
    }
    if (xkbFirstEvent_ == 0) {
        error = "the X server lacks the X keyboard extension";
        return false;
    }
    randrFirstEvent_ = randr->first_event;

    const auto randrVersion = xcb_randr_query_version(get(), 1, 5);
    const auto xkbUse = xcb_xkb_use_extension(get(), XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    xcb_input_xi_query_version_cookie_t xinputVersion{};
    if (hasXinput) {
        xinputVersion = xcb_input_xi_query_version(get(), 2, 2);
    }

    const auto randrReply = adopt(xcb_randr_query_version_reply(get(), randrVersion, nullptr));
    const auto xkbReply = adopt(xcb_xkb_use_extension_reply(get(), xkbUse, nullptr));
    if (hasXinput) {
        const auto reply = adopt(xcb_input_xi_query_version_reply(get(), xinputVersion, nullptr));
        if (reply && (reply->major_version > 2 || (reply->major_version == 2 && reply->minor_version >= 1))) {
            xinputOpcode_ = xinput->major_opcode;
        }
    }
    if (!randrReply || randrReply->major_version < 1 ||
        (randrReply->major_version == 1 && randrReply->minor_version < 5)) {
        error = "the X server's RandR extension is older than 1.5";
        return false;
    }
    if (!xkbReply || xkbReply->supported == 0) {
        error = "the X server's keyboard extension cannot be used";
        return false;
    }
    return true;
}

void X11Connection::arrived(XcbPointer<xcb_generic_event_t> event) {
    for (X11EventListener* listener : listeners_) {
        listener->eventArrived(*event);
    }
    pending_.push_back(std::move(event));
}

void X11Connection::drain() {
    takeQueued();  // what is there keeps xcb from reading the socket
    std::size_t before = 0;
    do {
        before = pending_.size();
        if (auto event = adopt(xcb_poll_for_event(get()))) {
            arrived(std::move(event));
        }
        takeQueued();
        // So few came with one read of the socket: there were no more, and another read would only find that out.
    } while (pending_.size() - before >= eventsOfAFullRead);
}

void X11Connection::takeQueued() {
    while (auto event = adopt(xcb_poll_for_queued_event(get()))) {
        arrived(std::move(event));
    }
}

void X11Connection::dispatchPending() {
    while (!pending_.empty()) {
        const XcbPointer<xcb_generic_event_t> event = std::move(pending_.front());
        pending_.pop_front();
        for (X11EventListener* listener : listeners_) {
            listener->handleEvent(*event);
        }
    }
}

}  // namespace vantrel::x11
