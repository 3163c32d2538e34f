// The members of each stored form: which must be there, what they may hold, what comes of them.
#include "VantrelCore/JSONDecoder.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/unit/core/JSONSamples.hpp"

namespace vantrel {
namespace {

using namespace std::string_literals;

struct IdentifierCase {
    const char* text;
    std::optional<std::uint32_t> expected;
};

/// What an identifier may be, wherever one is read.
const IdentifierCase identifierCases[] = {
    {"0", 0U},
    {"7", 7U},
    {"4294967295", 4294967295U},
    {"1.0", 1U},
    {"1e0", 1U},
    {"10E-1", 1U},
    {"4294967295.0", 4294967295U},
    {"4.294967295e9", 4294967295U},
    {"-0", 0U},
    {"-0.0", 0U},
    {"-1", std::nullopt},
    {"-1.0", std::nullopt},
    {"1.5", std::nullopt},
    {"0.1", std::nullopt},
    {"1e-300", std::nullopt},
    {"4294967296", std::nullopt},
    {"4294967295.5", std::nullopt},
    {"4294967296.0", std::nullopt},
    {"1e10", std::nullopt},
    {"1e300", std::nullopt},
    {"1e999", std::nullopt},
    {"18446744073709551615", std::nullopt},
    {"18446744073709551616", std::nullopt},
    {"18446744073709551617", std::nullopt},
    {"-4294967295", std::nullopt},
    {"-18446744073709551615", std::nullopt},
    {"\"7\"", std::nullopt},
    {"true", std::nullopt},
    {"false", std::nullopt},
    {"[7]", std::nullopt},
    {"{}", std::nullopt},
};

TEST(JSONDecoder, decodeDisplay_identifiersOfAllKinds_areCheckedForRangeAndFraction) {
    for (const IdentifierCase& row : identifierCases) {
        const auto display =
            decoder.decodeDisplay(filled(R"({"id":@,"minX":1,"minY":2,"width":3,"height":4})", row.text));
        ASSERT_EQ(display.has_value(), row.expected.has_value()) << row.text;
        if (display) {
            EXPECT_EQ(*display, DisplaySnapshot(*row.expected, 1, 2, 3, 4)) << row.text;
        }
    }
    EXPECT_EQ(decoder.decodeDisplay(R"({"id":null,"minX":1,"minY":2,"width":3,"height":4})"), std::nullopt);
}

TEST(JSONDecoder, decodeDisplay_anyMemberMissingOrWrong_givesNone) {
    const std::vector<std::string> names{"id", "minX", "minY", "width", "height"};
    for (const std::string& damaged : names) {
        for (const std::string& value : {""s, "null"s, "\"1\""s, "[]"s}) {
            std::string text = "{\"other\":0";
            for (const std::string& name : names) {
                if (name != damaged) {
                    text += ",\"" + name + "\":1";
                } else if (!value.empty()) {
                    text += ",\"" + name + "\":" + value;
                }
            }
            text += "}";
            EXPECT_EQ(decoder.decodeDisplay(text), std::nullopt) << text;
        }
    }
}

TEST(JSONDecoder, decodeDisplay_negativeSize_isKeptAsItStands) {
    EXPECT_EQ(decoder.decodeDisplay(R"({"height":-4,"width":-3,"minY":2.5,"minX":-0.5,"id":9,"more":[]})"),
              DisplaySnapshot(9, -0.5, 2.5, -3, -4));
}

TEST(JSONDecoder, decodeSavedPoint_threeMembers_hasNoDisplay) {
    const SavedPoint expected{sampleID, "P", {1, 2}, std::nullopt};
    EXPECT_EQ(decoder.decodeSavedPoint(samplePoint), expected);
}

TEST(JSONDecoder, decodeSavedPoint_displayNull_hasNoDisplay) {
    const SavedPoint expected{sampleID, "P", {1, 2}, std::nullopt};
    EXPECT_EQ(decoder.decodeSavedPoint(R"({"displayID":null,"point":{"y":2,"x":1},"name":"P",)" + idMember + "}"),
              expected);
}

TEST(JSONDecoder, decodeSavedPoint_identifiersOfAllKinds_areCheckedForRangeAndFraction) {
    for (const IdentifierCase& row : identifierCases) {
        const std::string text = filled(R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"P",)"
                                        R"("point":{"x":1,"y":2},"displayID":@})",
                                        row.text);
        const auto point = decoder.decodeSavedPoint(text);
        ASSERT_EQ(point.has_value(), row.expected.has_value()) << row.text;
        if (point) {
            EXPECT_EQ(*point, (SavedPoint{sampleID, "P", {1, 2}, row.expected})) << row.text;
        }
    }
}

TEST(JSONDecoder, decodeSavedPoint_anyMemberMissingOrWrong_givesNone) {
    for (const std::string& text : {
             R"({"name":"P","point":{"x":1,"y":2}})"s,
             "{" + idMember + R"(,"point":{"x":1,"y":2}})",
             "{" + idMember + R"(,"name":"P"})",
             R"({"id":7,"name":"P","point":{"x":1,"y":2}})"s,
             R"({"id":null,"name":"P","point":{"x":1,"y":2}})"s,
             R"({"id":"","name":"P","point":{"x":1,"y":2}})"s,
             R"({"id":"E621E1F8C36C495A93FC0C247A3E6E5F","name":"P","point":{"x":1,"y":2}})"s,
             R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F ","name":"P","point":{"x":1,"y":2}})"s,
             R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5G","name":"P","point":{"x":1,"y":2}})"s,
             "{" + idMember + R"(,"name":1,"point":{"x":1,"y":2}})",
             "{" + idMember + R"(,"name":null,"point":{"x":1,"y":2}})",
             "{" + idMember + R"(,"name":"P","point":null})",
             "{" + idMember + R"(,"name":"P","point":[1,2]})",
             "{" + idMember + R"(,"name":"P","point":{"x":1}})",
             "{" + idMember + R"(,"name":"P","point":{"x":1,"y":"2"}})",
             "[" + samplePoint + "]",
         }) {
        EXPECT_EQ(decoder.decodeSavedPoint(text), std::nullopt) << text;
    }
}

TEST(JSONDecoder, decodeSavedPoint_escapedName_isUnescaped) {
    const auto point = decoder.decodeSavedPoint(
        "{" + idMember + R"(,"name":"\"\\\/\b\f\n\r\t\u0000\u00e9\ud83d\uDDB1é","point":{"x":1,"y":2}})");
    ASSERT_TRUE(point);
    EXPECT_EQ(point->name, "\"\\/\b\f\n\r\t\0é🖱é"s);
}

TEST(JSONDecoder, decodeSavedPoints_emptyArray_isAnEmptyList) {
    EXPECT_EQ(decoder.decodeSavedPoints("[]"), std::vector<SavedPoint>{});
    EXPECT_EQ(decoder.decodeSavedPoints(" [ ] "), std::vector<SavedPoint>{});
}

TEST(JSONDecoder, decodeSavedPoints_several_keepTheirOrder) {
    const auto list = decoder.decodeSavedPoints("[{" + idMember + R"(,"name":"B","point":{"x":1,"y":2}},{)" + idMember +
                                                R"(,"name":"A","point":{"x":3,"y":4},"displayID":7}])");
    const std::vector<SavedPoint> expected{{sampleID, "B", {1, 2}, std::nullopt}, {sampleID, "A", {3, 4}, 7U}};
    EXPECT_EQ(list, expected);
}

TEST(JSONDecoder, decodeSavedPoints_oneDamaged_failsTheWholeList) {
    const std::string elements[] = {"{}", "null", "7", "[]", R"({"id":"x","name":"P","point":{"x":1,"y":2}})"};
    for (const std::string& damaged : elements) {
        EXPECT_EQ(decoder.decodeSavedPoints('[' + samplePoint + ',' + damaged + ']'), std::nullopt) << damaged;
        EXPECT_EQ(decoder.decodeSavedPoints('[' + damaged + ',' + samplePoint + ']'), std::nullopt) << damaged;
    }
}

TEST(JSONDecoder, decodeSavedPoints_noArray_givesNone) {
    EXPECT_EQ(decoder.decodeSavedPoints("{}"), std::nullopt);
    EXPECT_EQ(decoder.decodeSavedPoints(samplePoint), std::nullopt);
    EXPECT_EQ(decoder.decodeSavedPoints(R"({"0":)" + samplePoint + "}"), std::nullopt);
}

TEST(JSONDecoder, decodePositions_anyMemberNames_standAsTheyAre) {
    const auto positions = decoder.decodePositions(
        R"({"1":{"x":10,"y":20},"abc":{"x":1,"y":1},"":{"x":2,"y":2},"4294967296":{"x":3,"y":3},)"
        R"("01":{"x":4,"y":4},"+7":{"y":5,"x":5},"\u0000":{"x":6,"y":6}})");
    const std::map<std::string, VantrelPoint> expected{
        {"1", {10, 20}}, {"abc", {1, 1}}, {"", {2, 2}},    {"4294967296", {3, 3}},
        {"01", {4, 4}},  {"+7", {5, 5}},  {"\0"s, {6, 6}},
    };
    EXPECT_EQ(positions, expected);
}

TEST(JSONDecoder, decodePositions_emptyObject_isAnEmptyMap) {
    EXPECT_EQ(decoder.decodePositions("{}"), (std::map<std::string, VantrelPoint>{}));
}

TEST(JSONDecoder, decodePositions_memberTwice_theLastCounts) {
    const std::map<std::string, VantrelPoint> expected{{"5", {3, 4}}};
    EXPECT_EQ(decoder.decodePositions(R"({"5":{"x":1,"y":2},"5":{"x":3,"y":4}})"), expected);
    EXPECT_EQ(decoder.decodePositions(R"({"5":null,"5":{"x":3,"y":4}})"), expected);
}

TEST(JSONDecoder, decodePositions_oneDamaged_failsTheWholeMap) {
    for (const char* damaged : {"null", "7", "{}", "[]", R"({"x":1})", R"({"x":1,"y":"2"})"}) {
        for (const char* form : {R"({"1":{"x":1,"y":2},"2":@,"3":{"x":1,"y":2}})", R"({"1":{"x":1,"y":2},"abc":@})",
                                 R"({"":@,"1":{"x":1,"y":2}})"}) {
            EXPECT_EQ(decoder.decodePositions(filled(form, damaged)), std::nullopt) << form << damaged;
        }
    }
}

TEST(JSONDecoder, decodePositions_noObject_givesNone) {
    EXPECT_EQ(decoder.decodePositions("[]"), std::nullopt);
    EXPECT_EQ(decoder.decodePositions(R"([{"x":1,"y":2}])"), std::nullopt);
}

}  // namespace
}  // namespace vantrel
