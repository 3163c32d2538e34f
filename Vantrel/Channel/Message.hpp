#pragma once

#include <glib.h>

#include <optional>
#include <string>
#include <string_view>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel {

/// What the agent and a helper program tell each other: a name, and a body whose type goes with the name. In GVariant's
/// serialisation, as a packet is one message.
struct Message {
    std::string name;
    GVariantPointer body;  ///< never null

    /// Takes the body over when it is floating.
    Message(std::string_view messageName, GVariant* messageBody);
    /// Without anything to say but its name.
    explicit Message(std::string_view messageName);

    /// Whether it is the message of that name with a body of that type (a GVariant type string).
    [[nodiscard]] bool is(std::string_view wantedName, const char* type) const;
};

std::string encodedPacket(const Message& message);

/// None when the packet is no message.
std::optional<Message> decodedPacket(std::string_view packet);

}  // namespace vantrel
