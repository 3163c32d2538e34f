#pragma once

#include <set>
#include <vector>

#include "Vantrel/Backends/Common/HotKeyBinder.hpp"
#include "Vantrel/Backends/X11/HeldKeyWatch.hpp"
#include "Vantrel/Backends/X11/Keymap.hpp"
#include "Vantrel/Backends/X11/ScreenState.hpp"
#include "Vantrel/Backends/X11/X11Connection.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::x11 {

/// System-wide hot keys by passive grabs on the root window. Grabs follow the keymap by themselves: after a change of
/// layout or keyboard only what is different is grabbed anew.
class X11HotKeyBinder final : public backend::HotKeyBinder, public X11EventListener {
  public:
    X11HotKeyBinder(X11Connection& connection, ScreenState& screen);
    ~X11HotKeyBinder() override;
    X11HotKeyBinder(const X11HotKeyBinder&) = delete;
    X11HotKeyBinder& operator=(const X11HotKeyBinder&) = delete;

    void setPressed(Pressed pressed) override { pressed_ = std::move(pressed); }
    OSStatus bind(const backend::KeyCombination& combination) override;
    void unbind(const backend::KeyCombination& combination) override;

    void handleEvent(const xcb_generic_event_t& event) override;

  private:
    void handleKeyPress(const xcb_key_press_event_t& press);
    [[nodiscard]] std::optional<backend::KeyCombination> combinationOf(const xcb_key_press_event_t& press) const;
    [[nodiscard]] bool isKeymapEvent(const xcb_generic_event_t& event) const;
    void followKeymap();
    [[nodiscard]] std::set<KeyGrab> wantedGrabs() const;
    bool grab(const std::vector<KeyGrab>& grabs, std::vector<KeyGrab>& granted);
    void ungrab(const KeyGrab& grab);
    void releaseUnwantedGrabs();

    X11Connection& connection_;
    ScreenState& screen_;
    Keymap keymap_;
    std::set<KeyGrab> grabs_;
    bool grabsAreSynchronous_ = false;
    std::vector<backend::KeyCombination> bound_;
    Pressed pressed_;
    HeldKeyWatch heldKeys_;
    LoopSource keymapTask_;
};

}  // namespace vantrel::x11
