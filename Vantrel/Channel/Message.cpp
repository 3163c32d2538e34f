#include "Vantrel/Channel/Message.hpp"

namespace vantrel {

namespace {

constexpr auto packetType = "(sv)";

}  // namespace

Message::Message(std::string_view messageName, GVariant* messageBody)
    : name(messageName), body(g_variant_ref_sink(messageBody)) {}

Message::Message(std::string_view messageName) : Message(messageName, g_variant_new_tuple(nullptr, 0)) {}

bool Message::is(std::string_view wantedName, const char* type) const {
    return name == wantedName && g_variant_is_of_type(body.get(), G_VARIANT_TYPE(type)) != FALSE;
}

std::string encodedPacket(const Message& message) {
    const GVariantPointer packet(
        g_variant_ref_sink(g_variant_new(packetType, message.name.c_str(), message.body.get())));
    return {static_cast<const char*>(g_variant_get_data(packet.get())), g_variant_get_size(packet.get())};
}

std::optional<Message> decodedPacket(std::string_view packet) {
    // A copy, which is aligned as GVariant wants it.
    GBytes* const bytes = g_bytes_new(packet.data(), packet.size());
    const GVariantPointer value(g_variant_ref_sink(g_variant_new_from_bytes(G_VARIANT_TYPE(packetType), bytes, FALSE)));
    g_bytes_unref(bytes);
    if (g_variant_is_normal_form(value.get()) == FALSE) {
        return std::nullopt;
    }
    const gchar* name = nullptr;
    GVariant* body = nullptr;
    g_variant_get(value.get(), "(&sv)", &name, &body);
    Message message(name, body);
    g_variant_unref(body);
    return message;
}

}  // namespace vantrel
