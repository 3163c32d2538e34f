#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Vantrel/Platform/DisplayServices.hpp"
#include "Vantrel/Platform/HotKeyServices.hpp"
#include "Vantrel/Platform/ItemPresenter.hpp"
#include "Vantrel/Platform/KeyboardCapture.hpp"
#include "Vantrel/Platform/PointerServices.hpp"

namespace vantrel {

/// What a windowing system gives as a whole, over the one connection of this process to it. Main thread only; where it
/// waits for events it is served by the default main context.
class DisplaySession : public KeyboardCapture {
  public:
    struct Events {
        /// Once, when the windowing system is gone: one clear line says what went away.
        std::function<void(const std::string& reason)> ended;
        /// Instead: it is gone, but is started again in the same session. What was had of it is lost all the same.
        std::function<void()> interrupted{};
        /// Another start of the program handed over these URLs; none: it was started without any.
        std::function<void(std::vector<std::string> urls)> opened;
    };

    /// What the programs that draw are to connect to, by Qt's name for such a windowing system ("xcb", "wayland").
    [[nodiscard]] virtual std::string windowingSystem() const = 0;

    virtual DisplayServices& displays() = 0;
    virtual PointerReader& pointerReader() = 0;
    virtual PointerWarper& pointerWarper() = 0;
    virtual HotKeyServices& hotKeys() = 0;

    /// Makes this process the session's agent; false when another process is.
    virtual bool claim() = 0;

    /// Hands URLs to the session's agent and waits for its receipt, a few seconds at most; an empty list says that the
    /// program was started without any. False when there is no agent or it does not answer. Needs no session bus.
    virtual bool handOver(const std::vector<std::string>& urls) = 0;

    /// Serves the connection from the main loop, until this object is destroyed.
    virtual void attach(Events events) = 0;

    /// What shows the status item by means of the windowing system; null where that has no such thing.
    /// `events` are told until it is destroyed, which must be before the session.
    virtual std::unique_ptr<ItemPresenter> makeItemPresenter(ItemPresenter::Events events) = 0;
};

}  // namespace vantrel
