#include "Vantrel/Desktop/Sound/RemoteSoundPlayer.hpp"

#include <chrono>
#include <string>
#include <utility>

#include "Vantrel/Channel/SoundMessages.hpp"

namespace vantrel::desktop {

namespace {

constexpr std::chrono::seconds lingeringTime{10};
/// Too short to be heard, and ten times what a jump takes.
constexpr std::chrono::milliseconds delay{10};

}  // namespace

RemoteSoundPlayer::RemoteSoundPlayer(Helper::Start start)
    : program_(std::move(start), {.received = [this](const Message&) { isBeginningDue_ = false; },
                                  // Whatever the reason: sounds are not worth a line.
                                  .ended = [this](const std::string&) { isBeginningDue_ = false; }}) {}

void RemoteSoundPlayer::play(std::string_view soundName) {
    if (!isBeginningDue_ && !soon_.isSet()) {
        soon_ = LoopSource::after(delay, [this, name = std::string(soundName)] { send(name); });
    }
}

void RemoteSoundPlayer::send(const std::string& soundName) {
    if (program_.start()) {
        isBeginningDue_ = true;
        program_.send({sound_messages::play, g_variant_new("s", soundName.c_str())});
        program_.endAfter(lingeringTime);
    }
}

}  // namespace vantrel::desktop
