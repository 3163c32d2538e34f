#include "helpers/messages/OverlayMessage.hpp"

#include "FuzzTarget.hpp"

using namespace vantrel;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto message = desktop::decodedPacket(fuzz::text(data, size));
    if (!message) {
        return 0;
    }
    fuzz::require(desktop::decodedPacket(desktop::encodedPacket(*message)) == message, "a message reads back equal");
    const auto rows = desktop::rowsFromFields(message->fields);
    fuzz::require(desktop::rowsFromFields(desktop::rowFields(rows)) == rows, "rows read back equal");
    return 0;
}
