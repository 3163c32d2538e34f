#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <vector>

#include "Vantrel/Backends/X11/DeferredTask.hpp"
#include "Vantrel/Backends/X11/HeldKeyWatch.hpp"
#include "Vantrel/Backends/X11/Keymap.hpp"
#include "Vantrel/Backends/X11/ScreenState.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"
#include "Vantrel/Platform/HotKeyServices.hpp"

namespace vantrel::x11 {

/// System-wide hot keys by passive grabs on the root window. Grabs follow the keymap by themselves: after a change of
/// layout or keyboard only what is different is grabbed anew.
class X11HotKeys final : public HotKeyServices, public X11EventListener {
  public:
    X11HotKeys(X11Connection& connection, ScreenState& screen);
    ~X11HotKeys() override;
    X11HotKeys(const X11HotKeys&) = delete;
    X11HotKeys& operator=(const X11HotKeys&) = delete;

    /// Where deferred work runs.
    void setContext(GMainContext* context);

    EventTargetRef GetEventDispatcherTarget() override;
    OSStatus InstallEventHandler(EventTargetRef target, EventHandlerProc handler, EventTypeSpec eventType,
                                 void* userData, EventHandlerRef& handlerRef) override;
    OSStatus RemoveEventHandler(EventHandlerRef handler) override;
    OSStatus RegisterEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID hotKeyID,
                                 EventTargetRef target, std::uint32_t options, EventHotKeyRef& hotKeyRef) override;
    OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) override;
    OSStatus GetEventParameter(EventRef event, std::uint32_t name, std::uint32_t type, std::size_t bufferSize,
                               EventHotKeyID& hotKeyID) override;

    void handleEvent(const xcb_generic_event_t& event) override;

  private:
    struct HotKey;
    struct Handler;

    void handleKeyPress(const xcb_key_press_event_t& press);
    [[nodiscard]] const HotKey* hotKeyFor(const xcb_key_press_event_t& press) const;
    void report(const HotKey& hotKey);
    [[nodiscard]] bool isKeymapEvent(const xcb_generic_event_t& event) const;
    void followKeymap();
    [[nodiscard]] std::set<KeyGrab> wantedGrabs() const;
    bool grab(const std::vector<KeyGrab>& grabs, std::vector<KeyGrab>& granted);
    void ungrab(const KeyGrab& grab);
    void releaseUnwantedGrabs();

    X11Connection& connection_;
    ScreenState& screen_;
    GMainContext* context_ = nullptr;
    Keymap keymap_;
    std::set<KeyGrab> grabs_;
    bool grabsAreSynchronous_ = false;
    std::vector<std::unique_ptr<HotKey>> hotKeys_;
    std::vector<std::unique_ptr<Handler>> handlers_;
    HeldKeyWatch heldKeys_;
    DeferredTask keymapTask_;
};

}  // namespace vantrel::x11
