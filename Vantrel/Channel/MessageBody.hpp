#pragma once

#include <glib.h>

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "Vantrel/Channel/Message.hpp"

namespace vantrel {

// Values as GVariants, and back. A struct is the tuple of what its `fields()` ties together, so that each is described
// once, for both ends and both directions.

template <typename Value>
GVariant* variantOf(const Value& value) {
    if constexpr (std::is_same_v<Value, bool>) {
        return g_variant_new_boolean(value ? TRUE : FALSE);
    } else if constexpr (std::is_same_v<Value, std::int32_t>) {
        return g_variant_new_int32(value);
    } else if constexpr (std::is_same_v<Value, std::uint64_t>) {
        return g_variant_new_uint64(value);
    } else if constexpr (std::is_same_v<Value, double>) {
        return g_variant_new_double(value);
    } else if constexpr (std::is_same_v<Value, std::string>) {
        return g_variant_new_string(value.c_str());
    } else if constexpr (std::is_same_v<Value, std::uint32_t> || std::is_enum_v<Value>) {
        return g_variant_new_uint32(static_cast<std::uint32_t>(value));
    } else {
        return std::apply(
            [](const auto&... field) {
                GVariant* const children[] = {variantOf(field)...};
                return g_variant_new_tuple(children, sizeof...(field));
            },
            Value::fields(value));
    }
}

template <typename Element>
GVariant* variantOf(const std::vector<Element>& values) {
    const GVariantPointer example(g_variant_ref_sink(variantOf(Element())));
    std::vector<GVariant*> children;
    children.reserve(values.size());
    for (const Element& value : values) {
        children.push_back(variantOf(value));
    }
    return g_variant_new_array(g_variant_get_type(example.get()), children.data(), children.size());
}

/// Reads what variantOf() made of a value of that type.
template <typename Value>
void readVariant(GVariant* variant, Value& value) {
    if constexpr (std::is_same_v<Value, bool>) {
        value = g_variant_get_boolean(variant) != FALSE;
    } else if constexpr (std::is_same_v<Value, std::int32_t>) {
        value = g_variant_get_int32(variant);
    } else if constexpr (std::is_same_v<Value, std::uint64_t>) {
        value = g_variant_get_uint64(variant);
    } else if constexpr (std::is_same_v<Value, double>) {
        value = g_variant_get_double(variant);
    } else if constexpr (std::is_same_v<Value, std::string>) {
        value = g_variant_get_string(variant, nullptr);
    } else if constexpr (std::is_same_v<Value, std::uint32_t> || std::is_enum_v<Value>) {
        value = static_cast<Value>(g_variant_get_uint32(variant));
    } else {
        gsize index = 0;
        const auto readNext = [&](auto& field) {
            readVariant(GVariantPointer(g_variant_get_child_value(variant, index++)).get(), field);
        };
        std::apply([&](auto&... field) { (readNext(field), ...); }, Value::fields(value));
    }
}

template <typename Element>
void readVariant(GVariant* variant, std::vector<Element>& values) {
    for (gsize index = 0; index < g_variant_n_children(variant); ++index) {
        readVariant(GVariantPointer(g_variant_get_child_value(variant, index)).get(), values.emplace_back());
    }
}

/// The message of the value's name with the value for a body.
template <typename Value>
Message messageOf(const Value& value) {
    return {Value::name, variantOf(value)};
}

/// The value that the message brings; none when it is another message.
template <typename Value>
std::optional<Value> valueOf(const Message& message) {
    Value value;
    const GVariantPointer example(g_variant_ref_sink(variantOf(value)));
    if (!message.is(Value::name, g_variant_get_type_string(example.get()))) {
        return std::nullopt;
    }
    readVariant(message.body.get(), value);
    return value;
}

}  // namespace vantrel
