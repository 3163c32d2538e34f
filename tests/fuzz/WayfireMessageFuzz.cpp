// What a program in wayfire's place might say over its socket, and what may stand in its configuration.
#include <algorithm>

#include "FuzzTarget.hpp"
#include "Vantrel/Backends/Wayfire/WayfireChord.hpp"
#include "Vantrel/Backends/Wayfire/WayfireMessages.hpp"
#include "Vantrel/Backends/Wayfire/WayfireSocket.hpp"

using namespace vantrel;

namespace {

void readMessage(std::string_view message) {
    wayfire::isEvent(message);
    wayfire::positionIn(message);
    wayfire::canBind(message);
    wayfire::bindingIn(message);
    wayfire::pressedIn(message);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::text(data, size);
    readMessage(bytes);
    std::string received(bytes);
    if (const auto messages = wayfire::completeMessages(received)) {
        std::for_each(messages->begin(), messages->end(), readMessage);
        std::size_t taken = 0;
        for (const std::string& message : *messages) {
            taken += sizeof(std::uint32_t) + message.size();
        }
        fuzz::require(taken + received.size() == bytes.size(), "no byte is lost or read twice");
    }
    for (const wayfire::Chord& chord : wayfire::chordsInConfiguration(bytes)) {
        const auto again =
            wayfire::chordsInConfiguration("[command]\nbinding_again = " + wayfire::textOf(chord) + "\n");
        fuzz::require(again.size() == 1 && again.front() == chord, "a chord that was read reads back equal");
    }
    return 0;
}
