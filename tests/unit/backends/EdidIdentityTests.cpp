#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "Vantrel/Backends/Common/DisplayIdentity.hpp"

namespace vantrel::backend {
namespace {

std::vector<std::uint8_t> edid(std::string_view serialText) {
    std::vector<std::uint8_t> bytes(128, 0);
    constexpr std::array<std::uint8_t, 18> head{0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x10,
                                                0xAC, 0x7B, 0xA0, 0x4C, 0x33, 0x32, 0x31, 0x05, 0x1E};
    std::copy(head.begin(), head.end(), bytes.begin());
    if (!serialText.empty()) {
        bytes[72 + 3] = 0xFF;
        std::copy(serialText.begin(), serialText.end(), bytes.begin() + 72 + 5);
    }
    return bytes;
}

TEST(EdidIdentity, edidIdentity_baseBlock_isMakerModelAndSerial) {
    EXPECT_EQ(edidIdentity(edid("")), "10AC:A07B:3132334C:");
}

TEST(EdidIdentity, edidIdentity_serialDescriptor_isPartOfIt) {
    EXPECT_EQ(edidIdentity(edid("CN0X12\n      ")), "10AC:A07B:3132334C:CN0X12");
}

TEST(EdidIdentity, edidIdentity_anythingElse_isEmpty) {
    EXPECT_EQ(edidIdentity({}), "");
    auto shortened = edid("");
    shortened.resize(127);
    EXPECT_EQ(edidIdentity(shortened), "");
    auto garbled = edid("");
    garbled[3] = 0;
    EXPECT_EQ(edidIdentity(garbled), "");
}

}  // namespace
}  // namespace vantrel::backend
