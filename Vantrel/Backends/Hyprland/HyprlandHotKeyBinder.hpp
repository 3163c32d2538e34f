#pragma once

#include <string>
#include <vector>

#include "Vantrel/Backends/Common/AnswerTime.hpp"
#include "Vantrel/Backends/Common/HotKeyBinder.hpp"
#include "Vantrel/Backends/Hyprland/HyprlandCommands.hpp"
#include "Vantrel/Backends/Hyprland/HyprlandSocket.hpp"
#include "Vantrel/Backends/Wayland/MomentaryKeymap.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::hyprland {

/// Hot keys of a Hyprland that has no protocol for them, by its own bindings: of places, to an event. What the person
/// binds is refused; Hyprland would carry out both.
class HyprlandHotKeyBinder final : public backend::HotKeyBinder {
  public:
    /// `eventFile` is the socket on which Hyprland tells of events, a line each.
    HyprlandHotKeyBinder(HyprlandSocket& commands, Language language, std::filesystem::path eventFile,
                         wayland::ReadKeymap readKeymap);
    ~HyprlandHotKeyBinder() override;
    HyprlandHotKeyBinder(const HyprlandHotKeyBinder&) = delete;
    HyprlandHotKeyBinder& operator=(const HyprlandHotKeyBinder&) = delete;

    void setPressed(Pressed pressed) override { pressed_ = std::move(pressed); }
    OSStatus bind(const backend::KeyCombination& combination) override;
    void unbind(const backend::KeyCombination& combination) override;

  private:
    struct BoundKey {
        backend::KeyCombination combination;
        std::vector<xkb_keycode_t> keycodes;
    };

    void listen();
    void receive();
    void obey(std::string_view event);
    OSStatus bindKey(const BoundKey& key, xkb_keymap* keymap, Clock::time_point deadline);
    void unbindKey(const BoundKey& key, Clock::time_point deadline);
    void restore();

    HyprlandSocket& commands_;
    Language language_;
    std::filesystem::path eventFile_;
    backend::AnswerTime patience_;
    wayland::MomentaryKeymap keymap_;
    FileDescriptor events_;
    std::string received_;  ///< the beginning of a line
    LoopSource listening_;  ///< for events, or for the time to try again
    std::vector<BoundKey> bound_;
    LoopSource restoring_;
    Pressed pressed_;
};

}  // namespace vantrel::hyprland
