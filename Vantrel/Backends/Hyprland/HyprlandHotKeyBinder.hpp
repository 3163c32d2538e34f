#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Vantrel/Backends/Common/HotKeyBinder.hpp"
#include "Vantrel/Backends/Hyprland/HyprlandCommands.hpp"
#include "Vantrel/Backends/Hyprland/HyprlandSocket.hpp"
#include "Vantrel/Backends/Wayland/SeatKeymap.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::hyprland {

/// Hot keys of a Hyprland that has no protocol for them, by its own bindings: of places, to an event. What the person
/// binds is refused; Hyprland would carry out both.
class HyprlandHotKeyBinder final : public backend::HotKeyBinder {
  public:
    using ReadKeymap = std::function<wayland::KeymapPointer(Clock::time_point deadline)>;

    /// `eventFile` is the socket on which Hyprland tells of events, a line each.
    HyprlandHotKeyBinder(HyprlandSocket& commands, Language language, std::filesystem::path eventFile,
                         ReadKeymap readKeymap);
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
    OSStatus bindKey(const BoundKey& key, Clock::time_point deadline);
    void unbindKey(const BoundKey& key, Clock::time_point deadline);
    void restore();

    HyprlandSocket& commands_;
    Language language_;
    std::filesystem::path eventFile_;
    ReadKeymap readKeymap_;
    FileDescriptor events_;
    std::string received_;           ///< the beginning of a line
    LoopSource listening_;           ///< for events, or for the time to try again
    wayland::KeymapPointer keymap_;  ///< for the registrations of one moment
    LoopSource forgetKeymap_;
    std::vector<BoundKey> bound_;
    LoopSource restoring_;
    Pressed pressed_;
};

}  // namespace vantrel::hyprland
