#pragma once

#include "Vantrel/Platform/SoundPlayer.hpp"
#include "tests/fakes/Journal.hpp"

namespace vantrel::fake {

/// Silence, noted.
class FakeSoundPlayer final : public SoundPlayer {
  public:
    explicit FakeSoundPlayer(Journal& journal) : journal_(journal) {}

    void play(std::string_view soundName) override { journal_.push_back("play(" + std::string(soundName) + ")"); }

  private:
    Journal& journal_;
};

}  // namespace vantrel::fake
