#include "Vantrel/Platform/DefaultsConversions.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace vantrel {
namespace {

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct Conversion {
    DefaultsValue stored;
    std::optional<std::string> asString;
    bool asBool;
    std::int64_t asInteger;
    std::optional<std::string> asData;
};

Conversion text(const std::string& value, bool asBool, std::int64_t asInteger) {
    return {value, value, asBool, asInteger, std::nullopt};
}

Conversion integer(std::int64_t value, const std::string& asString, bool asBool) {
    return {value, asString, asBool, value, std::nullopt};
}

Conversion real(double value, const std::string& asString, bool asBool, std::int64_t asInteger) {
    return {value, asString, asBool, asInteger, std::nullopt};
}

Conversion data(const std::string& bytes) {
    return {DefaultsData{bytes}, std::nullopt, false, 0, bytes};
}

const std::vector<Conversion>& table() {
    static const std::vector<Conversion> conversions{
        text("", false, 0),
        text("YES", true, 0),
        text("yes", true, 0),
        text("NO", false, 0),
        text("true", true, 0),
        text("True", true, 0),
        text("false", false, 0),
        text("on", false, 0),
        text("1", true, 1),
        text("0", false, 0),
        text("-1", true, -1),
        text("+1", true, 1),
        text("- 1", false, 0),
        text("--1", false, 0),
        text("007", true, 7),
        text("000", false, 0),
        text("0.5", false, 0),
        text("3.9", true, 3),
        text("1e3", true, 1),
        text("0x10", false, 0),
        text("12abc", true, 12),
        text("abc12", false, 0),
        text(" \t\n12 ", true, 12),
        text("   ", false, 0),
        text(std::string("1\0002", 3), true, 1),
        text("\xff\xfe", false, 0),
        text("9223372036854775807", true, largest),
        text("9223372036854775808", true, largest),
        text("-9223372036854775808", true, smallest),
        text("-9223372036854775809", true, smallest),
        text("99999999999999999999999999", true, largest),
        text("-99999999999999999999999999", true, smallest),
        text("nan", false, 0),
        {true, "1", true, 1, std::nullopt},
        {false, "0", false, 0, std::nullopt},
        integer(0, "0", false),
        integer(1, "1", true),
        integer(-1, "-1", true),
        integer(4294967296, "4294967296", true),
        integer(largest, "9223372036854775807", true),
        integer(smallest, "-9223372036854775808", true),
        real(0.0, "0", false, 0),
        real(-0.0, "0", false, 0),
        real(0.5, "0.5", true, 0),
        real(-3.75, "-3.75", true, -3),
        real(10.0, "10", true, 10),
        real(100000.0, "100000", true, 100000),
        real(0.1, "0.1", true, 0),
        real(9007199254740992.0, "9007199254740992", true, 9007199254740992),
        real(9223372036854775808.0, "9223372036854775808", true, largest),
        real(-9223372036854775808.0, "-9223372036854775808", true, smallest),
        real(1e300, "1e+300", true, largest),
        real(-1e300, "-1e+300", true, smallest),
        real(5e-324, "5e-324", true, 0),
        real(infinity, "inf", true, largest),
        real(-infinity, "-inf", true, smallest),
        real(notANumber, "nan", false, 0),
        data(""),
        data("1"),
        data("YES"),
        data(std::string("\0\xff", 2)),
    };
    return conversions;
}

std::string nameOf(const DefaultsValue& value) {
    return "type " + std::to_string(value.index()) + ", " +
           stringFromDefaultsValue(value).value_or(dataFromDefaultsValue(value).value_or("nothing"));
}

TEST(DefaultsConversions, stringFromDefaultsValue_table_converts) {
    for (const Conversion& conversion : table()) {
        EXPECT_EQ(stringFromDefaultsValue(conversion.stored), conversion.asString) << nameOf(conversion.stored);
    }
}

TEST(DefaultsConversions, boolFromDefaultsValue_table_converts) {
    for (const Conversion& conversion : table()) {
        EXPECT_EQ(boolFromDefaultsValue(conversion.stored), conversion.asBool) << nameOf(conversion.stored);
    }
}

TEST(DefaultsConversions, integerFromDefaultsValue_table_converts) {
    for (const Conversion& conversion : table()) {
        EXPECT_EQ(integerFromDefaultsValue(conversion.stored), conversion.asInteger) << nameOf(conversion.stored);
    }
}

TEST(DefaultsConversions, dataFromDefaultsValue_table_converts) {
    for (const Conversion& conversion : table()) {
        EXPECT_EQ(dataFromDefaultsValue(conversion.stored), conversion.asData) << nameOf(conversion.stored);
    }
}

}  // namespace
}  // namespace vantrel
