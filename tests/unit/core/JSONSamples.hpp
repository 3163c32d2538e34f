#pragma once

#include <string>
#include <string_view>

#include "VantrelCore/JSONDecoder.hpp"

namespace vantrel {

inline const JSONDecoder decoder;
inline const UUID sampleID{
    {0xE6, 0x21, 0xE1, 0xF8, 0xC3, 0x6C, 0x49, 0x5A, 0x93, 0xFC, 0x0C, 0x24, 0x7A, 0x3E, 0x6E, 0x5F}};

inline const std::string idMember = R"("id":"e621e1f8-c36c-495a-93fc-0c247a3e6e5f")";
inline const std::string samplePoint = "{" + idMember + R"(,"name":"P","point":{"x":1,"y":2}})";

/// The text with each @ replaced by the value.
inline std::string filled(std::string_view form, std::string_view value) {
    std::string text;
    for (const char character : form) {
        if (character == '@') {
            text += value;
        } else {
            text += character;
        }
    }
    return text;
}

}  // namespace vantrel
