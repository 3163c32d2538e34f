#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Platform/DisplaySession.hpp"

namespace vantrel::x11 {

/// An X server: displays, pointer, hot keys, the place of the one agent, the old system tray.
class X11Session final : public DisplaySession {
  public:
    /// Connects to the display that DISPLAY names. Null, with one clear line in `error`, when there is none, when it
    /// lacks what is needed, or when it runs inside a Wayland session and so cannot move the pointer.
    static std::unique_ptr<X11Session> connect(std::string& error);

    ~X11Session() override;
    X11Session(const X11Session&) = delete;
    X11Session& operator=(const X11Session&) = delete;

    [[nodiscard]] std::string windowingSystem() const override { return "xcb"; }
    DisplayServices& displays() override;
    PointerReader& pointerReader() override;
    PointerWarper& pointerWarper() override;
    HotKeyServices& hotKeys() override;
    bool claim() override;
    bool handOver(const std::vector<std::string>& urls) override;
    void attach(Events events) override;
    std::unique_ptr<ItemPresenter> makeItemPresenter(ItemPresenter::Events events) override;

  private:
    struct Parts;
    explicit X11Session(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> parts_;
};

}  // namespace vantrel::x11
