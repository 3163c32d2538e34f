#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <string>
#include <vector>

#include "Vantrel/Backends/X11/X11Connection.hpp"

namespace vantrel::x11 {

/// One agent a display: the agent owns the selection "_VANTREL_AGENT" (ICCCM, manager selections), and another start of
/// the program hands its URLs to the owner. The starter puts them on a window of its own as the property
/// "_VANTREL_URLS", each ended by a NUL, and sends the owner a client message of that type with the window's number;
/// the owner reads and deletes the property, which is the receipt.
class AgentSelection final : public X11EventListener {
  public:
    using Opened = std::function<void(std::vector<std::string>)>;

    explicit AgentSelection(X11Connection& connection);

    /// Becomes the owner; false when another client is.
    bool claim();

    /// Hands the URLs to the owner and waits for the receipt, a few seconds at most. False when there is no owner or it
    /// does not answer. An empty list says that the program was started without URLs.
    bool send(const std::vector<std::string>& urls);

    /// Called with what other starts hand over.
    void setOpened(Opened opened) { opened_ = std::move(opened); }

    void handleEvent(const xcb_generic_event_t& event) override;

  private:
    xcb_window_t makeWindow(std::uint32_t eventMask);
    bool waitForReceipt(xcb_window_t window);
    void receive(xcb_window_t window);

    X11Connection& connection_;
    xcb_atom_t selection_;
    xcb_atom_t urls_;
    xcb_window_t window_ = XCB_NONE;
    Opened opened_;
};

}  // namespace vantrel::x11
