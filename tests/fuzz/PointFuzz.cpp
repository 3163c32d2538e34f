#include "FuzzTarget.hpp"

using namespace vantrel;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto decode = [](std::string_view json) { return JSONDecoder().decodePoint(json); };
    if (const auto value = decode(fuzz::text(data, size))) {
        fuzz::requireRoundTrip(*value, decode);
    }
    return 0;
}
