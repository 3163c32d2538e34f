#include "Vantrel/Desktop/Sound/DelayedSoundPlayer.hpp"

#include <string>

namespace vantrel::desktop {

DelayedSoundPlayer::~DelayedSoundPlayer() {
    if (pending_) {
        pending_->cancel();
    }
}

void DelayedSoundPlayer::play(std::string_view soundName) {
    if (pending_) {
        return;
    }
    pending_ = std::make_shared<DispatchWorkItem>([this, name = std::string(soundName)] {
        player_.play(name);
        pending_.reset();  // the queue still holds the work that runs
    });
    queue_.asyncAfter(delay, pending_);
}

}  // namespace vantrel::desktop
