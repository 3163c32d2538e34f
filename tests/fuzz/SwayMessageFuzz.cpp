// What a program in sway's place, or a sway of another kind, might say over its socket.
#include "FuzzTarget.hpp"
#include "Vantrel/Backends/Sway/SwayIpc.hpp"
#include "Vantrel/Backends/Sway/SwayReplies.hpp"

using namespace vantrel;

namespace {

void readPayload(std::string_view payload) {
    sway::allSucceeded(payload);
    sway::modesIn(payload);
    sway::configurationIn(payload);
    sway::configurationFileIn(payload);
    sway::changeIn(payload);
    sway::pressedCommandIn(payload);
}

/// However the bytes are cut up on their way, the messages are the same.
void requireSameInPieces(std::string_view bytes) {
    std::string whole(bytes);
    const auto messages = sway::completeMessages(whole);
    std::string received(bytes.substr(0, bytes.size() / 2));
    auto first = sway::completeMessages(received);
    received += bytes.substr(bytes.size() / 2);
    const auto second = first ? sway::completeMessages(received) : std::nullopt;
    fuzz::require(messages.has_value() == second.has_value(), "the same bytes make sense in pieces");
    if (!messages) {
        return;
    }
    first->insert(first->end(), second->begin(), second->end());
    fuzz::require(received == whole && first->size() == messages->size(), "the same bytes are the same messages");
    for (std::size_t index = 0; index < messages->size(); ++index) {
        fuzz::require((*first)[index].payload == (*messages)[index].payload, "a message is the same in pieces");
        readPayload((*messages)[index].payload);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::text(data, size);
    readPayload(bytes);
    requireSameInPieces(bytes);
    return 0;
}
