// Packets as a helper program, or whoever has its end of the channel, might send them.

#include "FuzzTarget.hpp"
#include "Vantrel/Channel/ScreenMessages.hpp"
#include "Vantrel/Channel/SettingsMessages.hpp"

using namespace vantrel;

namespace {

/// What is read from a message is the same after it was written and read once more.
template <typename Value>
void requireSame(const Message& message) {
    if (const auto value = valueOf<Value>(message)) {
        const auto again = decodedPacket(encodedPacket(messageOf(*value)));
        fuzz::require(again && valueOf<Value>(*again) == value, "a message reads back equal");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto message = decodedPacket(fuzz::text(data, size));
    if (!message) {
        return 0;
    }
    requireSame<OpenMenu>(*message);
    requireSame<UpdateMenu>(*message);
    requireSame<ChosenRow>(*message);
    requireSame<WindowContent>(*message);
    requireSame<WindowReport>(*message);
    requireSame<WindowRow>(*message);
    requireSame<WindowRowText>(*message);
    requireSame<WindowPlace>(*message);
    requireSame<WindowKey>(*message);
    // A size of its own kind: not a number is not equal to itself.
    valueOf<ScreenText>(*message);
    return 0;
}
