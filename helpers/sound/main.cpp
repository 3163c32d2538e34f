// The helper that plays the agent's sounds: each name that the agent sends, answered once the sound has begun. It ends
// when the agent hangs up.

#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "Vantrel/Channel/Channel.hpp"
#include "Vantrel/Channel/SoundMessages.hpp"
#include "helpers/sound/EventSounds.hpp"

namespace {

/// A stopped sound server holds its callers for half a minute. After so many seconds the alarm ends this program, and
/// the agent starts another with the next sound.
constexpr unsigned longestStart = 5;
/// More than the longest sound.
constexpr std::chrono::milliseconds soundLength{500};

void playSounds(vantrel::Channel& agent, vantrel::sound::EventSounds& sounds) {
    while (const auto message = agent.receive()) {
        if (message->is(vantrel::sound_messages::play, "s")) {
            alarm(longestStart);
            sounds.play(g_variant_get_string(message->body.get(), nullptr));
            alarm(0);
            agent.send(vantrel::Message(vantrel::sound_messages::begun));
        }
    }
}

}  // namespace

int main() {
    vantrel::Channel agent{vantrel::FileDescriptor(vantrel::Channel::helperDescriptor)};
    vantrel::sound::EventSounds sounds;
    while (agent.isOpen()) {
        pollfd socket{agent.descriptor(), POLLIN, 0};
        poll(&socket, 1, -1);
        playSounds(agent, sounds);
    }
    // What was asked for last is still to be heard.
    std::this_thread::sleep_for(soundLength);
    return 0;
}
