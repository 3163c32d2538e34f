#pragma once

#include <string>
#include <string_view>

namespace vantrel {

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
