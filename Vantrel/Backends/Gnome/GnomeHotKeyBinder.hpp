#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Vantrel/Backends/Common/AnswerTime.hpp"
#include "Vantrel/Backends/Common/HotKeyBinder.hpp"
#include "Vantrel/Backends/Gnome/ShellExtension.hpp"
#include "Vantrel/Backends/Wayland/KeymapWatch.hpp"
#include "Vantrel/Backends/Wayland/MomentaryKeymap.hpp"

namespace vantrel::gnome {

/// Hot keys that GNOME Shell catches for the extension.
class GnomeHotKeyBinder final : public backend::HotKeyBinder {
  public:
    GnomeHotKeyBinder(ShellExtension& extension, const wayland::Registry& registry, wayland::ReadKeymap readKeymap);
    GnomeHotKeyBinder(const GnomeHotKeyBinder&) = delete;
    GnomeHotKeyBinder& operator=(const GnomeHotKeyBinder&) = delete;

    void setPressed(Pressed pressed) override { pressed_ = std::move(pressed); }
    OSStatus bind(const backend::KeyCombination& combination) override;
    void unbind(const backend::KeyCombination& combination) override;

    /// The hot key of that number was pressed.
    void press(std::uint32_t number);

    /// Gives all of them to an extension that knows none.
    void restore();

    /// Whether one was refused because the extension was not there.
    [[nodiscard]] bool lacksHotKeys() const { return lacksHotKeys_; }

  private:
    struct BoundKey {
        backend::KeyCombination combination;
        std::uint32_t number = 0;  ///< by which the extension knows it
        std::vector<std::string> accelerators;
    };

    std::vector<std::string> acceleratorsFor(const backend::KeyCombination& combination, Clock::time_point deadline);
    void followKeymap();

    ShellExtension& extension_;
    std::vector<BoundKey> bound_;
    std::uint32_t lastNumber_ = 0;
    bool lacksHotKeys_ = false;
    Pressed pressed_;
    backend::AnswerTime patience_;
    wayland::MomentaryKeymap keymap_;
    LoopSource following_;
    wayland::KeymapWatch layouts_;
};

}  // namespace vantrel::gnome
