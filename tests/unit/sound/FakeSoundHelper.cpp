// Stands in for the helper that plays sounds: writes the names that it is given into the file "played" of its working
// directory, line by line. While a file "stuck" is there it answers nothing, as if the sound server hung; with a file
// "once" it ends after the first sound.

#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <thread>

#include "Vantrel/Channel/Channel.hpp"
#include "Vantrel/Channel/SoundMessages.hpp"

namespace {

bool exists(const char* name) {
    return access(name, F_OK) == 0;
}

}  // namespace

int main() {
    vantrel::Channel agent{vantrel::FileDescriptor(vantrel::Channel::helperDescriptor)};
    while (agent.isOpen()) {
        pollfd socket{agent.descriptor(), POLLIN, 0};
        poll(&socket, 1, -1);
        while (const auto message = agent.receive()) {
            if (!message->is(vantrel::sound_messages::play, "s")) {
                continue;
            }
            std::ofstream("played", std::ios::app) << g_variant_get_string(message->body.get(), nullptr) << "\n";
            while (exists("stuck")) {
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
            }
            agent.send(vantrel::Message(vantrel::sound_messages::begun));
            std::ofstream("answered", std::ios::app) << "1\n";
            if (exists("once")) {
                return 0;
            }
        }
    }
    std::ofstream("gone", std::ios::app) << getpid() << "\n";
    return 0;
}
