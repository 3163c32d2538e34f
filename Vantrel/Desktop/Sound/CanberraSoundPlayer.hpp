#pragma once

#include <string_view>

#include "Vantrel/Desktop/Helpers/Helper.hpp"
#include "Vantrel/Platform/SoundPlayer.hpp"

namespace vantrel::desktop {

/// Plays sounds through a helper program, which uses the desktop's event-sound library (libcanberra). The helper comes
/// with the first sound and goes a while after the last, so that the resting agent carries nothing of it; and whatever
/// the sound server does to its callers happens there.
class CanberraSoundPlayer final : public SoundPlayer {
  public:
    explicit CanberraSoundPlayer(Helper::Start start);

    /// Hands the sound to the helper. Drops it while the helper has not yet begun the last one.
    void play(std::string_view soundName) override;

  private:
    bool isBeginningDue_ = false;
    Helper program_;
};

}  // namespace vantrel::desktop
