#include <charconv>
#include <string>

#include "FuzzTarget.hpp"

using namespace vantrel;

namespace {

/// The identifier that the member name is when written as the encoder does; none for any other name.
std::optional<std::uint32_t> identifier(const std::string& name) {
    std::uint32_t number = 0;
    const char* const end = name.data() + name.size();
    const auto result = std::from_chars(name.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end || std::to_string(number) != name) {
        return std::nullopt;
    }
    return number;
}

RememberedPositions positionsOf(const std::map<std::string, VantrelPoint>& members) {
    RememberedPositions positions;
    for (const auto& [name, point] : members) {
        if (const auto displayID = identifier(name)) {
            positions[*displayID] = point;
        }
    }
    return positions;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto members = JSONDecoder().decodePositions(fuzz::text(data, size));
    if (!members) {
        return 0;
    }
    const RememberedPositions positions = positionsOf(*members);
    const auto written = JSONEncoder().encode(positions);
    fuzz::require(written.has_value(), "decoded positions can be encoded");
    const auto back = JSONDecoder().decodePositions(*written);
    fuzz::require(back.has_value(), "encoded positions can be decoded");
    fuzz::require(back->size() == positions.size(), "every position reads back under its own name");
    for (const auto& [displayID, point] : positions) {
        const auto found = back->find(std::to_string(displayID));
        fuzz::require(found != back->end(), "a position reads back under its name");
        fuzz::require(JSONEncoder().encode(found->second) == JSONEncoder().encode(point), "a position keeps its bits");
    }
    return 0;
}
