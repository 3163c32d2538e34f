#include "Vantrel/Backends/Common/DisplayIdentity.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>
#include <set>
#include <tuple>

namespace vantrel::backend {

namespace {

constexpr std::size_t edidBaseBlockSize = 128;

/// FNV-1a, 32 bits. Frozen: people's remembered positions are stored under what it gives.
std::uint32_t hashOf(const std::string& text) {
    std::uint32_t hash = 2166136261U;
    for (const char character : text) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    }
    return hash;
}

/// The text of the serial-number descriptor (tag 0xFF), which many makers fill where the number is left empty.
std::string serialDescriptor(std::span<const std::uint8_t> edid) {
    for (std::size_t offset = 54; offset + 18 <= 126; offset += 18) {
        const auto descriptor = edid.subspan(offset, 18);
        if (descriptor[0] == 0 && descriptor[1] == 0 && descriptor[3] == 0xFF) {
            const auto text = descriptor.subspan(5, 13);
            const auto end = std::find(text.begin(), text.end(), '\n');
            return {text.begin(), end};
        }
    }
    return {};
}

}  // namespace

std::string edidIdentity(std::span<const std::uint8_t> edid) {
    constexpr std::array<std::uint8_t, 8> header{0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};
    if (edid.size() < edidBaseBlockSize || !std::equal(header.begin(), header.end(), edid.begin())) {
        return {};
    }
    std::array<char, 40> numbers{};
    std::snprintf(numbers.data(), numbers.size(), "%02X%02X:%02X%02X:%02X%02X%02X%02X:", edid[8], edid[9], edid[11],
                  edid[10], edid[15], edid[14], edid[13], edid[12]);
    return numbers.data() + serialDescriptor(edid);
}

DisplayIdentity identityOfOutput(const std::string& edid, const std::string& connector) {
    return edid.empty() ? DisplayIdentity{"connector:" + connector, connector}
                        : DisplayIdentity{"edid:" + edid, connector};
}

std::vector<std::uint32_t> identifiersOf(const std::vector<DisplayIdentity>& identities) {
    std::vector<std::size_t> order(identities.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&identities](std::size_t first, std::size_t second) {
        return std::tie(identities[first].what, identities[first].where) <
               std::tie(identities[second].what, identities[second].where);
    });

    std::vector<std::uint32_t> identifiers(identities.size());
    std::set<std::uint32_t> taken{0};  // 0 is no display
    for (const std::size_t index : order) {
        std::string text = identities[index].what;
        std::uint32_t identifier = hashOf(text);
        for (text += "@" + identities[index].where; !taken.insert(identifier).second; text += "+") {
            identifier = hashOf(text);
        }
        identifiers[index] = identifier;
    }
    return identifiers;
}

}  // namespace vantrel::backend
