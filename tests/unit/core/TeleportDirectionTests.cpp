#include "VantrelCore/TeleportDirection.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace vantrel {
namespace {

TEST(TeleportDirection, rawValue_ofEachCase_isItsStep) {
    EXPECT_EQ(static_cast<int>(TeleportDirection::next), 1);
    EXPECT_EQ(static_cast<int>(TeleportDirection::previous), -1);
}

TEST(TeleportDirection, fromRawValue_stepOfACase_givesTheCase) {
    EXPECT_EQ(teleportDirectionFromRawValue(1), TeleportDirection::next);
    EXPECT_EQ(teleportDirectionFromRawValue(-1), TeleportDirection::previous);
}

TEST(TeleportDirection, fromRawValue_anythingElse_givesNone) {
    for (const std::int64_t rawValue :
         {std::int64_t{0}, std::int64_t{2}, std::int64_t{-2}, std::int64_t{4294967295}, std::int64_t{4294967297},
          std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        EXPECT_EQ(teleportDirectionFromRawValue(rawValue), std::nullopt) << rawValue;
    }
}

}  // namespace
}  // namespace vantrel
