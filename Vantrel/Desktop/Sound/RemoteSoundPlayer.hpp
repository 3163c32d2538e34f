#pragma once

#include <string>
#include <string_view>

#include "Vantrel/Desktop/Helpers/Helper.hpp"
#include "Vantrel/Platform/SoundPlayer.hpp"

namespace vantrel::desktop {

/// Plays sounds through a helper program, which uses the desktop's event-sound library (libcanberra). The helper comes
/// with the first sound and goes a while after the last, so that the resting agent carries nothing of it; and whatever
/// the sound server does to its callers happens there. A sound begins a moment after it was asked for: the programs
/// that play it would otherwise wake up just when the display server moves the pointer, and take a processor from it.
/// On two cores a jump then takes half as long again.
class RemoteSoundPlayer final : public SoundPlayer {
  public:
    explicit RemoteSoundPlayer(Helper::Start start);

    /// Hands the sound to the helper. Drops it while the last one has not begun.
    void play(std::string_view soundName) override;

  private:
    void send(const std::string& soundName);

    LoopSource soon_;
    bool isBeginningDue_ = false;
    Helper program_;
};

}  // namespace vantrel::desktop
