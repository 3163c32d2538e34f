#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "VantrelCore/JSONDecoder.hpp"
#include "VantrelCore/JSONEncoder.hpp"

namespace vantrel {
namespace {

/// A toolkit sets the user's locale for the whole process; so do these tests.
class JSONLocale : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        ASSERT_EQ(setenv("LOCPATH", VANTREL_TEST_LOCALES, 1), 0);
        ASSERT_NE(std::setlocale(LC_ALL, GetParam()), nullptr) << "the build makes this locale in LOCPATH";
        ASSERT_STRNE(std::localeconv()->decimal_point, ".");
    }

    void TearDown() override {
        std::setlocale(LC_ALL, "C");
        unsetenv("LOCPATH");
    }
};

TEST_P(JSONLocale, decode_pointInTheNumber_isTheDecimalPoint) {
    EXPECT_EQ(JSONDecoder().decodePoint(R"({"x":5.5,"y":-1234567.875e-2})"), VantrelPoint(5.5, -12345.67875));
}

TEST_P(JSONLocale, decode_commaInTheNumber_givesNone) {
    EXPECT_EQ(JSONDecoder().decodePoint(R"({"x":5,5,"y":1})"), std::nullopt);
}

TEST_P(JSONLocale, decode_afterwards_theLocaleIsTheUsersAgain) {
    const std::string before = std::localeconv()->decimal_point;
    EXPECT_TRUE(JSONDecoder().decodePoint(R"({"x":5.5,"y":1})"));
    EXPECT_FALSE(JSONDecoder().decodePoint("{"));
    EXPECT_EQ(std::localeconv()->decimal_point, before);
}

TEST_P(JSONLocale, encode_fraction_isWrittenWithAPoint) {
    EXPECT_EQ(JSONEncoder().encode(VantrelPoint(5.5, 1234567.25)), R"({"x":5.5,"y":1234567.25})");
    EXPECT_EQ(JSONEncoder().encode(VantrelPoint(1e300, -0.0)), R"({"x":1e+300,"y":-0.0})");
}

INSTANTIATE_TEST_SUITE_P(DecimalPoints, JSONLocale, testing::Values("de_DE.UTF-8", "ps_AF.UTF-8"),
                         [](const auto& instance) { return std::string(instance.param).substr(0, 5); });

}  // namespace
}  // namespace vantrel
