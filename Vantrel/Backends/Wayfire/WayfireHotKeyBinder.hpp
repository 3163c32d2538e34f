#pragma once

#include <filesystem>
#include <vector>

#include "Vantrel/Backends/Common/AnswerTime.hpp"
#include "Vantrel/Backends/Common/HotKeyBinder.hpp"
#include "Vantrel/Backends/Wayfire/WayfireChord.hpp"
#include "Vantrel/Backends/Wayfire/WayfireSocket.hpp"
#include "Vantrel/Backends/Wayland/MomentaryKeymap.hpp"

namespace vantrel::wayfire {

/// Hot keys by wayfire's plugin `command`: of places, to an event. What the person's configuration binds is refused,
/// because wayfire would carry out both.
class WayfireHotKeyBinder final : public backend::HotKeyBinder {
  public:
    /// The socket outlives this object.
    WayfireHotKeyBinder(WayfireSocket& socket, std::filesystem::path configuration, wayland::ReadKeymap readKeymap);
    ~WayfireHotKeyBinder() override;
    WayfireHotKeyBinder(const WayfireHotKeyBinder&) = delete;
    WayfireHotKeyBinder& operator=(const WayfireHotKeyBinder&) = delete;

    void setPressed(Pressed pressed) override { pressed_ = std::move(pressed); }
    OSStatus bind(const backend::KeyCombination& combination) override;
    void unbind(const backend::KeyCombination& combination) override;

  private:
    struct BoundKey {
        backend::KeyCombination combination;
        std::vector<std::uint64_t> bindings;  ///< wayfire's numbers
    };

    [[nodiscard]] std::vector<Chord> chordsOf(const backend::KeyCombination& combination, Clock::time_point deadline);
    [[nodiscard]] bool isConfigured(const std::vector<Chord>& chords) const;
    void release(const BoundKey& key);
    void obey(const std::string& event);

    WayfireSocket& socket_;
    std::filesystem::path configuration_;
    backend::AnswerTime patience_;
    wayland::MomentaryKeymap keymap_;
    std::vector<BoundKey> bound_;
    Pressed pressed_;
};

}  // namespace vantrel::wayfire
