#include "Vantrel/Desktop/RandomUUIDGenerator.hpp"

#include <glib.h>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::desktop {

UUID RandomUUIDGenerator::makeUUID() {
    const GCharPointer text(g_uuid_string_random());
    return UUID::fromString(text.get()).value_or(UUID{});
}

}  // namespace vantrel::desktop
