#pragma once

#include "Vantrel/Platform/SoundPlayer.hpp"

namespace vantrel::desktop {

/// A system without sounds.
class NullSoundPlayer final : public SoundPlayer {
  public:
    void play(std::string_view /*soundName*/) override {}
};

}  // namespace vantrel::desktop
