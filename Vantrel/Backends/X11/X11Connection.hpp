#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Vantrel/Backends/X11/XcbRequests.hpp"

namespace vantrel::x11 {

/// Takes part in the events of a connection.
class X11EventListener {
  public:
    virtual ~X11EventListener() = default;

    /// The event was read from the socket, perhaps while somebody waits for a reply. Only to note what is out of date:
    /// nothing may be sent or called from here.
    virtual void eventArrived(const xcb_generic_event_t& /*event*/) {}

    /// The event's turn in the main loop, in the order of arrival.
    virtual void handleEvent(const xcb_generic_event_t& event) = 0;
};

/// One connection to an X server, with the extensions that the agent needs, and the queue of its events.
class X11Connection {
  public:
    /// Connects to the display that DISPLAY names; null with one clear line in `error` when that fails or the server
    /// lacks RandR 1.5 or the X keyboard extension.
    static std::unique_ptr<X11Connection> open(std::string& error);

    [[nodiscard]] xcb_connection_t* get() const { return connection_.get(); }
    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
    [[nodiscard]] int screenNumber() const { return screenNumber_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] std::uint8_t randrFirstEvent() const { return randrFirstEvent_; }
    [[nodiscard]] std::uint8_t xkbFirstEvent() const { return xkbFirstEvent_; }
    /// The major opcode of the X input extension; 0 when the server lacks version 2.1.
    [[nodiscard]] std::uint8_t xinputOpcode() const { return xinputOpcode_; }

    /// Whether the server has gone away; every request and reply after that is empty.
    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(get()) != 0; }

    /// The number of a named atom, made where it does not exist yet; XCB_ATOM_NONE when the connection is lost.
    [[nodiscard]] xcb_atom_t atom(std::string_view name) const { return internAtom(get(), name); }

    /// Listeners are not owned and outlive the connection's last event.
    void addListener(X11EventListener& listener) { listeners_.push_back(&listener); }

    /// Takes what the socket holds, without waiting, into the queue.
    void drain();

    /// Takes what xcb has read already, without touching the socket, into the queue.
    void takeQueued();

    /// Whether events wait for their turn. Those that came with a reply leave the socket silent: they are found only
    /// here.
    [[nodiscard]] bool hasPendingEvents() const { return !pending_.empty(); }

    /// Gives every event that waits its turn.
    void dispatchPending();

  private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    X11Connection() : connection_(xcb_connect(nullptr, &screenNumber_)) {}
    bool startExtensions(std::string& error);
    void arrived(XcbPointer<xcb_generic_event_t> event);

    int screenNumber_ = 0;
    std::unique_ptr<xcb_connection_t, Disconnect> connection_;
    const xcb_screen_t* screen_ = nullptr;
    std::uint8_t randrFirstEvent_ = 0;
    std::uint8_t xkbFirstEvent_ = 0;
    std::uint8_t xinputOpcode_ = 0;
    std::vector<X11EventListener*> listeners_;
    std::deque<XcbPointer<xcb_generic_event_t>> pending_;
};

}  // namespace vantrel::x11
