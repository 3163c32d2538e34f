#pragma once

#include <memory>
#include <vector>

#include "Vantrel/Backends/Common/AnswerTime.hpp"
#include "Vantrel/Backends/Common/HotKeyBinder.hpp"
#include "Vantrel/Backends/Wayland/KeymapWatch.hpp"
#include "Vantrel/Backends/Wayland/MomentaryKeymap.hpp"

namespace vantrel::wayland {

/// Hot keys by the protocol xx-hotkey-v1. The compositor tells what it or another program holds already, and takes a
/// hot key back when the person's configuration binds it later. It knows keys by what they type in the first layout,
/// not by their places, so these are looked up in the keyboard's map, again when that changes.
class HotKeyProtocolBinder final : public backend::HotKeyBinder {
  public:
    static bool isOffered(const Registry& registry);

    /// The protocol is offered. All of them outlive this object.
    HotKeyProtocolBinder(WaylandConnection& connection, const Registry& registry, const Seat& seat);
    ~HotKeyProtocolBinder() override;
    HotKeyProtocolBinder(const HotKeyProtocolBinder&) = delete;
    HotKeyProtocolBinder& operator=(const HotKeyProtocolBinder&) = delete;

    void setPressed(Pressed pressed) override { pressed_ = std::move(pressed); }
    OSStatus bind(const backend::KeyCombination& combination) override;
    void unbind(const backend::KeyCombination& combination) override;
    void setRecording(bool isRecording) override;

  private:
    struct Trigger;
    struct HotKey;
    struct Callbacks;

    void request(HotKey& hotKey);
    void notePress(const backend::KeyCombination& combination);
    void noteLoss();
    void deliver();
    void renew();

    WaylandConnection& connection_;
    WaylandPointer<xx_hotkey_manager_v1> manager_;
    backend::AnswerTime patience_;
    MomentaryKeymap keymap_;
    std::vector<std::unique_ptr<HotKey>> hotKeys_;
    bool isRecording_ = false;
    LoopSource renewal_;
    std::vector<backend::KeyCombination> presses_;  ///< noted, and not delivered yet
    LoopSource delivery_;
    Pressed pressed_;
    KeymapWatch keymapWatch_;
};

}  // namespace vantrel::wayland
