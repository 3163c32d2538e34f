#pragma once

#include <string>
#include <vector>

#include "Vantrel/Backends/Common/AnswerTime.hpp"
#include "Vantrel/Backends/Common/HotKeyBinder.hpp"
#include "Vantrel/Backends/Sway/SwayIpc.hpp"
#include "Vantrel/Backends/Wayland/KeyBindings.hpp"
#include "Vantrel/Backends/Wayland/MomentaryKeymap.hpp"
#include "Vantrel/Handles/LoopSource.hpp"

namespace vantrel::sway {

/// Hot keys by sway's own bindings: of places (bindcode), in every binding mode, to a command that does nothing but is
/// told of. What the person's configuration binds is refused, because sway would let us take it and tell nobody. (What
/// was bound while sway runs cannot be asked for.)
class SwayHotKeyBinder final : public backend::HotKeyBinder {
  public:
    /// Asks sway for what registrations need, so that they are answered soon. The commands' connection outlives this
    /// object, which listens on a connection of its own to that socket.
    SwayHotKeyBinder(SwayIpc& commands, const std::filesystem::path& socketFile, wayland::ReadKeymap readKeymap);
    ~SwayHotKeyBinder() override;
    SwayHotKeyBinder(const SwayHotKeyBinder&) = delete;
    SwayHotKeyBinder& operator=(const SwayHotKeyBinder&) = delete;

    void setPressed(Pressed pressed) override { pressed_ = std::move(pressed); }
    OSStatus bind(const backend::KeyCombination& combination) override;
    void unbind(const backend::KeyCombination& combination) override;

  private:
    struct BoundKey {
        backend::KeyCombination combination;
        std::uint32_t modifiers = 0;
        std::vector<xkb_keycode_t> keycodes;
        std::vector<std::string> chords;  ///< as sway writes them
        bool isLost = false;              ///< since a reload of the configuration
    };

    void listen();
    void receive();
    void obey(const Message& event);
    bool learn(Clock::time_point deadline);
    [[nodiscard]] bool isConfigured(const BoundKey& key, xkb_keymap* keymap) const;
    bool bindInModes(const BoundKey& key, const std::vector<std::string>& modes, Clock::time_point deadline);
    void unbindInModes(const BoundKey& key, Clock::time_point deadline);
    void restore();
    void restoreInMode(const std::string& mode);

    SwayIpc& commands_;
    SwayIpc events_;
    backend::AnswerTime patience_;
    wayland::MomentaryKeymap keymap_;
    LoopSource listening_;            ///< for events, or for the time to try again
    std::vector<std::string> modes_;  ///< empty until they are asked for, as the configuration is
    std::vector<wayland::ConfiguredBinding> configured_;
    std::vector<BoundKey> bound_;
    LoopSource restoreAgain_;
    Pressed pressed_;
};

}  // namespace vantrel::sway
