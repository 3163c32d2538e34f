#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <memory>

#include "Vantrel/Backends/X11/Tray/TrayWindow.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"
#include "Vantrel/Backends/X11/X11EventSource.hpp"

namespace vantrel::x11 {

/// An icon in the X screen's system tray (the System Tray and XEmbed protocols), whichever program has that role and
/// whenever it comes. Has a connection of its own: a tray's misbehaviour stays away from the hot keys.
class XEmbedTray final : private X11EventListener {
  public:
    struct Events {
        std::function<void()> pressed;  ///< the icon was clicked; the pointer is free to be grabbed
        std::function<void()> changed;  ///< docked or not, or another size
    };

    /// Connects to the display that DISPLAY names; null when it cannot.
    static std::unique_ptr<XEmbedTray> connect(Events events);
    ~XEmbedTray() override;
    XEmbedTray(const XEmbedTray&) = delete;
    XEmbedTray& operator=(const XEmbedTray&) = delete;

    [[nodiscard]] bool isDocked() const { return window_ && window_->isEmbedded(); }

    /// The window in the tray; null while not docked.
    [[nodiscard]] TrayWindow* window() const { return isDocked() ? window_.get() : nullptr; }

  private:
    XEmbedTray(std::unique_ptr<X11Connection> connection, Events events);

    void handleEvent(const xcb_generic_event_t& event) override;
    void dock();
    void undock();
    void connectionLost();

    std::unique_ptr<X11Connection> connection_;
    Events events_;
    xcb_atom_t selection_;
    xcb_atom_t managerMessage_;
    xcb_window_t manager_ = XCB_NONE;
    std::unique_ptr<TrayWindow> window_;
    std::unique_ptr<X11EventSource> source_;
};

}  // namespace vantrel::x11
