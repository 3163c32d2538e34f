#include "VantrelCore/UUID.hpp"

#include <gtest/gtest.h>

#include <string>

#include "tests/unit/core/JSONSamples.hpp"

namespace vantrel {
namespace {

constexpr const char* sampleText = "E621E1F8-C36C-495A-93FC-0C247A3E6E5F";

TEST(UUID, uuidString_anyBytes_isTheUpperCaseForm) {
    EXPECT_EQ(sampleID.uuidString(), sampleText);
    EXPECT_EQ(UUID{}.uuidString(), "00000000-0000-0000-0000-000000000000");
}

TEST(UUID, fromString_anyCase_givesTheSameBytes) {
    for (const char* text :
         {sampleText, "e621e1f8-c36c-495a-93fc-0c247a3e6e5f", "E621e1F8-c36C-495a-93Fc-0c247A3e6E5f"}) {
        EXPECT_EQ(UUID::fromString(text), sampleID) << text;
    }
}

TEST(UUID, fromString_everyByteValue_comesBack) {
    for (unsigned value = 0; value < 256; ++value) {
        UUID uuid;
        uuid.bytes.fill(static_cast<std::uint8_t>(value));
        uuid.bytes[value % 16] = static_cast<std::uint8_t>(255 - value);
        EXPECT_EQ(UUID::fromString(uuid.uuidString()), uuid);
    }
}

TEST(UUID, fromString_anyOtherForm_givesNone) {
    for (const char* text : {"", "E621E1F8C36C495A93FC0C247A3E6E5F", "{E621E1F8-C36C-495A-93FC-0C247A3E6E5F}",
                             "E621E1F8-C36C-495A-93FC-0C247A3E6E5", "E621E1F8-C36C-495A-93FC-0C247A3E6E5F0",
                             " 621E1F8-C36C-495A-93FC-0C247A3E6E5F", "E621E1F8-C36C-495A-93FC-0C247A3E6E5G",
                             "E621E1F80C36C-495A-93FC-0C247A3E6E5F", "E621E1F-8C36C-495A-93FC-0C247A3E6E5F",
                             "E621E1F8-C36C-495A-93FC00C247A3E6E5F", "-621E1F8-C36C-495A-93FC-0C247A3E6E5F",
                             "+621E1F8-C36C-495A-93FC-0C247A3E6E5F", "0x21E1F8-C36C-495A-93FC-0C247A3E6E5F"}) {
        EXPECT_EQ(UUID::fromString(text), std::nullopt) << text;
    }
}

TEST(UUID, fromString_anyCharacterReplaced_givesNone) {
    for (std::size_t position = 0; position < 36; ++position) {
        for (const char wrong : {'\0', 'g', '/', ':', '@', 'G', '`', '\x80', ' '}) {
            std::string text = sampleText;
            text[position] = wrong;
            EXPECT_EQ(UUID::fromString(text), std::nullopt) << text;
        }
    }
}

}  // namespace
}  // namespace vantrel
