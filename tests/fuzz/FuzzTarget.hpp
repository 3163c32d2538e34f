#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "VantrelCore/JSONDecoder.hpp"
#include "VantrelCore/JSONEncoder.hpp"

/// libFuzzer's entry point: tries one input, and ends the process abnormally when something is wrong.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace vantrel::fuzz {

inline std::string_view text(const std::uint8_t* data, std::size_t size) {
    // libFuzzer may hand over a null pointer for an empty input.
    return size == 0 ? std::string_view() : std::string_view(reinterpret_cast<const char*>(data), size);
}

inline void require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "violated: %s\n", what);
        std::abort();
    }
}

/// What was decoded can be written, reads back equal, and is then written the same: the texts tell the zeros' signs
/// apart, which equality does not.
template <typename Value, typename Decode>
void requireRoundTrip(const Value& value, const Decode& decode) {
    const auto written = JSONEncoder().encode(value);
    require(written.has_value(), "a decoded value can be encoded");
    const auto back = decode(*written);
    require(back.has_value(), "an encoded value can be decoded");
    require(*back == value, "a value reads back as it was written");
    require(JSONEncoder().encode(*back) == written, "a value that was read back is written the same");
}

}  // namespace vantrel::fuzz
