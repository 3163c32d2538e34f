#pragma once

#include <string_view>

namespace vantrel {

/// Plays the short named sounds of the system.
class SoundPlayer {
  public:
    virtual ~SoundPlayer() = default;

    /// Starts the sound and returns at once; a missing sound, device or server is silence.
    virtual void play(std::string_view soundName) = 0;
};

}  // namespace vantrel
