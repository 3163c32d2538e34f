// The helper that plays the agent's sounds. The agent talks to it over a socket: a packet with a sound's name, answered
// by a byte once the sound has begun. It ends by itself a while after the last sound, and when the agent goes.

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <thread>

#include "Vantrel/Desktop/HelperProgram.hpp"
#include "helpers/sound/EventSounds.hpp"

namespace {

using vantrel::desktop::helperSocket;

constexpr int lingeringTime = 10'000;  // milliseconds
/// A stopped sound server holds its callers for half a minute. After so many seconds the alarm ends this program, and
/// the agent starts another with the next sound.
constexpr unsigned longestStart = 5;
/// More than the longest sound.
constexpr std::chrono::milliseconds soundLength{500};

bool waitForPacket() {
    pollfd socket{helperSocket, POLLIN, 0};
    return poll(&socket, 1, lingeringTime) > 0;
}

/// The next sound's name; none when the agent has gone or nothing waits.
std::optional<std::string> receivedName() {
    std::array<char, 64> name{};
    const ssize_t length = recv(helperSocket, name.data(), name.size(), MSG_DONTWAIT);
    return length > 0 ? std::optional(std::string(name.data(), static_cast<std::size_t>(length))) : std::nullopt;
}

void playAndAnswer(vantrel::desktop::EventSounds& sounds, const std::string& name) {
    alarm(longestStart);
    sounds.play(name);
    alarm(0);
    send(helperSocket, "", 1, MSG_NOSIGNAL | MSG_DONTWAIT);
}

}  // namespace

int main() {
    vantrel::desktop::EventSounds sounds;
    while (waitForPacket()) {
        const auto name = receivedName();
        if (!name) {
            // The agent has gone; what it asked for last is still to be heard.
            std::this_thread::sleep_for(soundLength);
            return 0;
        }
        playAndAnswer(sounds, *name);
    }
    // From here on the agent's packets are refused, and it starts another helper. One may have come just before.
    shutdown(helperSocket, SHUT_RD);
    if (const auto name = receivedName()) {
        playAndAnswer(sounds, *name);
        std::this_thread::sleep_for(soundLength);
    }
    return 0;
}
