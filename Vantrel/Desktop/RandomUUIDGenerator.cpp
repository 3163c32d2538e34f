#include "Vantrel/Desktop/RandomUUIDGenerator.hpp"

#include <sys/random.h>

#include <cerrno>

#include "Vantrel/Platform/FatalError.hpp"

namespace vantrel::desktop {

UUID RandomUUIDGenerator::makeUUID() {
    UUID uuid;
    ssize_t count = 0;
    do {
        count = getrandom(uuid.bytes.data(), uuid.bytes.size(), 0);
    } while (count < 0 && errno == EINTR);
    if (count != static_cast<ssize_t>(uuid.bytes.size())) {
        fatalError("the kernel gives no random numbers");
    }
    // RFC 4122: the version in the seventh byte, the variant in the ninth.
    uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0FU) | 0x40U);
    uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3FU) | 0x80U);
    return uuid;
}

}  // namespace vantrel::desktop
