// Packets as a helper program, or whoever has its end of the channel, might send them.
#include <optional>

#include "FuzzTarget.hpp"
#include "Vantrel/Channel/ScreenMessages.hpp"
#include "Vantrel/Channel/SettingsMessages.hpp"

using namespace vantrel;

namespace {

/// What is read from a message is the same after it was written and read once more.
template <typename Value, typename Read, typename Write>
void requireSame(const Message& message, Read read, Write write) {
    if (const std::optional<Value> value = read(message)) {
        const auto again = decodedPacket(encodedPacket(write(*value)));
        fuzz::require(again && read(*again) == value, "a message reads back equal");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto message = decodedPacket(fuzz::text(data, size));
    if (!message) {
        return 0;
    }
    namespace screen = screen_messages;
    namespace settings = settings_messages;
    requireSame<std::vector<MenuRow>>(*message, screen::openedMenu, screen::openMenu);
    requireSame<std::vector<MenuRow>>(*message, screen::updatedMenu, screen::updateMenu);
    requireSame<std::uint32_t>(*message, screen::chosenRow, screen::chooseRow);
    requireSame<WindowContent>(*message, settings::contentOf, settings::content);
    requireSame<WindowReport>(*message, settings::reportOf, settings::report);
    requireSame<WindowRow>(*message, settings::wantedRowOf, settings::wantRow);
    requireSame<WindowRowText>(*message, settings::rowTextOf, settings::rowText);
    requireSame<WindowPlace>(*message, settings::placeOf, settings::place);
    // A size of its own kind: not a number is not equal to itself.
    screen::shownText(*message);
    return 0;
}
