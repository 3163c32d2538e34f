#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Vantrel/Backends/Common/AnswerTime.hpp"
#include "Vantrel/Backends/Common/HotKeyBinder.hpp"
#include "Vantrel/Backends/Plasma/GlobalShortcuts.hpp"
#include "Vantrel/Backends/Wayland/KeymapWatch.hpp"
#include "Vantrel/Backends/Wayland/MomentaryKeymap.hpp"

namespace vantrel::plasma {

/// Hot keys by Plasma's global shortcuts, which go by what keys type: so a place is bound by all that it types, in each
/// layout, and anew when the layouts change.
class PlasmaHotKeyBinder final : public backend::HotKeyBinder {
  public:
    PlasmaHotKeyBinder(GObjectPointer<GDBusConnection> bus, const wayland::Registry& registry,
                       wayland::ReadKeymap readKeymap);
    PlasmaHotKeyBinder(const PlasmaHotKeyBinder&) = delete;
    PlasmaHotKeyBinder& operator=(const PlasmaHotKeyBinder&) = delete;

    void setPressed(Pressed pressed) override { pressed_ = std::move(pressed); }
    OSStatus bind(const backend::KeyCombination& combination) override;
    void unbind(const backend::KeyCombination& combination) override;
    void setRecording(bool isRecording) override;

  private:
    struct BoundKey {
        backend::KeyCombination combination;
        std::string action;
        bool isHeld = false;  ///< pressed and not released yet
    };

    std::optional<GlobalShortcuts::Outcome> acquire(const BoundKey& key, Clock::time_point deadline);
    void restore();
    void press(const std::string& action);
    BoundKey* find(const std::string& action);

    std::vector<BoundKey> bound_;
    Pressed pressed_;
    backend::AnswerTime patience_;
    wayland::MomentaryKeymap keymap_;
    GlobalShortcuts shortcuts_;
    bool areLeftoversGone_ = false;
    bool isRecording_ = false;
    LoopSource restoring_;
    wayland::KeymapWatch layouts_;
};

}  // namespace vantrel::plasma
