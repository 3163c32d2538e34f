#include "Vantrel/Desktop/RandomUUIDGenerator.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>

namespace vantrel::desktop {
namespace {

TEST(RandomUUIDGenerator, makeUUID_manyTimes_versionFourAndNeverTheSame) {
    RandomUUIDGenerator generator;
    std::set<std::array<std::uint8_t, 16>> seen;
    UUID ones{};
    UUID zeros{};
    zeros.bytes.fill(0xFF);
    for (int count = 0; count < 1000; ++count) {
        const UUID uuid = generator.makeUUID();
        EXPECT_EQ(uuid.bytes[6] >> 4U, 4U);
        EXPECT_EQ(uuid.bytes[8] >> 6U, 2U);
        EXPECT_TRUE(seen.insert(uuid.bytes).second);
        for (std::size_t index = 0; index < uuid.bytes.size(); ++index) {
            ones.bytes[index] |= uuid.bytes[index];
            zeros.bytes[index] &= uuid.bytes[index];
        }
    }
    // Every bit but the six fixed ones has been both.
    for (std::size_t index = 0; index < ones.bytes.size(); ++index) {
        EXPECT_EQ(ones.bytes[index], index == 6 ? 0x4F : index == 8 ? 0xBF : 0xFF) << index;
        EXPECT_EQ(zeros.bytes[index], index == 6 ? 0x40 : index == 8 ? 0x80 : 0x00) << index;
    }
}

}  // namespace
}  // namespace vantrel::desktop
