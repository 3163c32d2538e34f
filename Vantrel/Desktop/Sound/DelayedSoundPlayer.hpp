#pragma once

#include <memory>

#include "Vantrel/Platform/MainQueue.hpp"
#include "Vantrel/Platform/SoundPlayer.hpp"

namespace vantrel::desktop {

/// Lets a sound begin a moment after it was asked for. The programs that play it would otherwise wake up just when the
/// display server moves the pointer, and take a processor from it: on two cores a jump then takes half as long again.
class DelayedSoundPlayer final : public SoundPlayer {
  public:
    /// Too short to be heard, and ten times what a jump takes.
    static constexpr Seconds delay{0.01};

    /// Both outlive this object.
    DelayedSoundPlayer(SoundPlayer& player, MainQueue& queue) : player_(player), queue_(queue) {}
    /// A sound that has not begun by then does not.
    ~DelayedSoundPlayer() override;
    DelayedSoundPlayer(const DelayedSoundPlayer&) = delete;
    DelayedSoundPlayer& operator=(const DelayedSoundPlayer&) = delete;

    /// Dropped while another sound is about to begin.
    void play(std::string_view soundName) override;

  private:
    SoundPlayer& player_;
    MainQueue& queue_;
    std::shared_ptr<DispatchWorkItem> pending_;
};

}  // namespace vantrel::desktop
