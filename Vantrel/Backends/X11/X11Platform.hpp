#pragma once

#include <glib.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Platform/DisplayServices.hpp"
#include "Vantrel/Platform/HotKeyServices.hpp"
#include "Vantrel/Platform/PointerServices.hpp"

namespace vantrel::x11 {

/// The abilities that an X server serves: displays, pointer and hot keys, over one connection.
class X11Platform {
  public:
    /// Connects to the display that DISPLAY names. Null, with one clear line in `error`, when there is none, when it
    /// lacks what is needed, or when it runs inside a Wayland session and so cannot move the pointer.
    static std::unique_ptr<X11Platform> connect(std::string& error);

    ~X11Platform();
    X11Platform(const X11Platform&) = delete;
    X11Platform& operator=(const X11Platform&) = delete;

    DisplayServices& displays();
    PointerReader& pointerReader();
    PointerWarper& pointerWarper();
    HotKeyServices& hotKeys();

    /// Makes this process the display's agent, by owning a selection (ICCCM). False when another agent has the display.
    bool claimDisplay();

    /// Hands URLs to the agent that has the display. False when there is none. For starts without a session bus.
    bool sendToAgent(const std::vector<std::string>& urls);

    /// Serves the connection from the main context, until this object is destroyed. `connectionLost` is called once
    /// when the X server goes away; `opened` is called with the URLs that another start of the program handed over, an
    /// empty list meaning that it was started without any.
    void attach(GMainContext* context, std::function<void()> connectionLost,
                std::function<void(std::vector<std::string>)> opened);

  private:
    struct Parts;
    explicit X11Platform(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> parts_;
};

}  // namespace vantrel::x11
