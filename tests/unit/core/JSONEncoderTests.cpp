#include "VantrelCore/JSONEncoder.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>
#include <vector>

#include "VantrelCore/JSONDecoder.hpp"
#include "tests/unit/core/JSONSamples.hpp"
#include "tests/unit/core/NotFinite.hpp"

namespace vantrel {
namespace {

using namespace std::string_literals;

constexpr double unencodable[] = {nan, -nan, infinity, -infinity};

struct EncodedNumber {
    double value;
    const char* text;
};

TEST(JSONEncoder, encodePoint_numbers_areTheShortestThatReadBack) {
    const EncodedNumber cases[] = {
        {0, "0"},
        {-0.0, "-0.0"},
        {10, "10"},
        {-3, "-3"},
        {5.5, "5.5"},
        {0.1, "0.1"},
        {-1020.25, "-1020.25"},
        {100000, "100000"},
        {-100000, "-100000"},
        {1e15, "1000000000000000"},
        {9007199254740992, "9007199254740992"},
        {-9007199254740992, "-9007199254740992"},
        {9007199254740994, "9007199254740994"},
        {1e21, "1e+21"},
        {1e300, "1e+300"},
        {1e-7, "1e-07"},
        {1.0 / 3, "0.3333333333333333"},
        {123456.789, "123456.789"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
        {std::numeric_limits<double>::lowest(), "-1.7976931348623157e+308"},
        {std::numeric_limits<double>::min(), "2.2250738585072014e-308"},
        {std::numeric_limits<double>::denorm_min(), "5e-324"},
    };
    for (const EncodedNumber& row : cases) {
        EXPECT_EQ(JSONEncoder().encode(VantrelPoint(row.value, 1)), R"({"x":)"s + row.text + R"(,"y":1})");
        EXPECT_EQ(JSONEncoder().encode(VantrelPoint(1, row.value)), R"({"x":1,"y":)"s + row.text + "}");
    }
}

TEST(JSONEncoder, encodePoint_notFinite_givesNone) {
    for (const double value : unencodable) {
        EXPECT_EQ(JSONEncoder().encode(VantrelPoint(value, 1)), std::nullopt);
        EXPECT_EQ(JSONEncoder().encode(VantrelPoint(1, value)), std::nullopt);
    }
}

TEST(JSONEncoder, encodeDisplay_anyDisplay_writesItsFiveMembersInOrder) {
    EXPECT_EQ(JSONEncoder().encode(DisplaySnapshot(4294967295U, -1440, 0.5, 1440, 900)),
              R"({"id":4294967295,"minX":-1440,"minY":0.5,"width":1440,"height":900})");
}

TEST(JSONEncoder, encodeDisplay_longestNumbers_fit) {
    const double longest = -2.2250738585072014e-308;
    EXPECT_EQ(JSONEncoder().encode(DisplaySnapshot(4294967295U, longest, longest, longest, longest)),
              R"({"id":4294967295,"minX":-2.2250738585072014e-308,"minY":-2.2250738585072014e-308,)"
              R"("width":-2.2250738585072014e-308,"height":-2.2250738585072014e-308})");
}

TEST(JSONEncoder, encodeDisplay_notFinite_givesNone) {
    for (const double value : unencodable) {
        EXPECT_EQ(JSONEncoder().encode(DisplaySnapshot(1, value, 2, 3, 4)), std::nullopt);
        EXPECT_EQ(JSONEncoder().encode(DisplaySnapshot(1, 1, value, 3, 4)), std::nullopt);
        EXPECT_EQ(JSONEncoder().encode(DisplaySnapshot(1, 1, 2, value, 4)), std::nullopt);
        EXPECT_EQ(JSONEncoder().encode(DisplaySnapshot(1, 1, 2, 3, value)), std::nullopt);
    }
}

TEST(JSONEncoder, encodeSavedPoint_onADisplay_writesFourMembersInOrder) {
    EXPECT_EQ(JSONEncoder().encode(SavedPoint{sampleID, "Point 1", {-300, 400}, 0U}),
              R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"Point 1","point":{"x":-300,"y":400},)"
              R"("displayID":0})");
}

TEST(JSONEncoder, encodeSavedPoint_noDisplay_leavesTheMemberOut) {
    EXPECT_EQ(JSONEncoder().encode(SavedPoint{sampleID, "Point 1", {1, 2}, std::nullopt}),
              R"({"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","name":"Point 1","point":{"x":1,"y":2}})");
}

TEST(JSONEncoder, encodeSavedPoint_notFinite_givesNone) {
    for (const double value : unencodable) {
        EXPECT_EQ(JSONEncoder().encode(SavedPoint{sampleID, "P", {value, 2}, 1U}), std::nullopt);
    }
}

struct NameCase {
    std::string name;
    std::string json;
};

TEST(JSONEncoder, encodeSavedPoint_namesOfAllKinds_areEscapedWhereJSONAsksForIt) {
    const NameCase cases[] = {
        {"", R"("")"},
        {"Point 1", R"("Point 1")"},
        {"a\"b\\c/d", R"("a\"b\\c/d")"},
        {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
        {"\0\x01\x1F\x7F"s, "\"\\u0000\\u0001\\u001f\x7F\""},
        {"Grüße 点 🖱️", R"("Grüße 点 🖱️")"},
        {"\xE2\x80\xA8", "\"\xE2\x80\xA8\""},
    };
    for (const NameCase& row : cases) {
        EXPECT_EQ(JSONEncoder().encode(SavedPoint{UUID{}, row.name, {1, 2}, std::nullopt}),
                  R"({"id":"00000000-0000-0000-0000-000000000000","name":)" + row.json + R"(,"point":{"x":1,"y":2}})");
    }
}

TEST(JSONEncoder, encodeSavedPoint_everyCharacterBelow128_comesBack) {
    std::string name;
    for (char character = 0; character < 127; ++character) {
        name += character;
    }
    const SavedPoint point{sampleID, name, {1, 2}, std::nullopt};
    EXPECT_EQ(JSONDecoder().decodeSavedPoint(JSONEncoder().encode(point).value()), point);
}

TEST(JSONEncoder, encodeSavedPoint_nameNotUTF8_givesNone) {
    for (const std::string& name : {"\x80"s, "caf\xE9"s, "\xED\xA0\x80"s, "\xC0\x80"s, "end\xF0\x9F"s}) {
        EXPECT_EQ(JSONEncoder().encode(SavedPoint{sampleID, name, {1, 2}, 1U}), std::nullopt);
    }
}

TEST(JSONEncoder, encodeSavedPoints_empty_isAnEmptyArray) {
    EXPECT_EQ(JSONEncoder().encode(std::vector<SavedPoint>{}), "[]");
}

TEST(JSONEncoder, encodeSavedPoints_several_areInListOrder) {
    const std::vector<SavedPoint> points{{UUID{}, "B", {1, 2}, std::nullopt}, {UUID{}, "A", {3, 4}, 7U}};
    EXPECT_EQ(JSONEncoder().encode(points),
              R"([{"id":"00000000-0000-0000-0000-000000000000","name":"B","point":{"x":1,"y":2}},)"
              R"({"id":"00000000-0000-0000-0000-000000000000","name":"A","point":{"x":3,"y":4},"displayID":7}])");
}

TEST(JSONEncoder, encodeSavedPoints_oneUnencodable_givesNone) {
    std::vector<SavedPoint> points(3, SavedPoint{sampleID, "P", {1, 2}, 1U});
    points[1].point.y = nan;
    EXPECT_EQ(JSONEncoder().encode(points), std::nullopt);
    points[1].point.y = 2;
    points[2].name = "\xFF";
    EXPECT_EQ(JSONEncoder().encode(points), std::nullopt);
}

TEST(JSONEncoder, encodePositions_empty_isAnEmptyObject) {
    EXPECT_EQ(JSONEncoder().encode(RememberedPositions{}), "{}");
}

TEST(JSONEncoder, encodePositions_one_isNamedInDecimal) {
    EXPECT_EQ(JSONEncoder().encode(RememberedPositions{{0, {1, 2}}}), R"({"0":{"x":1,"y":2}})");
    EXPECT_EQ(JSONEncoder().encode(RememberedPositions{{4294967295U, {-0.5, 2}}}),
              R"({"4294967295":{"x":-0.5,"y":2}})");
}

TEST(JSONEncoder, encodePositions_two_areTwoMembersInEitherOrder) {
    const RememberedPositions positions{{1, {10, 20}}, {5, {5.5, -3}}};
    const std::string text = JSONEncoder().encode(positions).value();
    const std::string one = R"("1":{"x":10,"y":20})";
    const std::string five = R"("5":{"x":5.5,"y":-3})";
    EXPECT_TRUE(text == "{" + one + "," + five + "}" || text == "{" + five + "," + one + "}") << text;
}

TEST(JSONEncoder, encodePositions_many_allComeBack) {
    RememberedPositions positions;
    std::map<std::string, VantrelPoint> expected;
    for (std::uint32_t index = 0; index < 300; ++index) {
        const std::uint32_t displayID = index * 14316557U;
        const VantrelPoint point(index * -1.25, index * 1e-3);
        positions[displayID] = point;
        expected[std::to_string(displayID)] = point;
    }
    EXPECT_EQ(JSONDecoder().decodePositions(JSONEncoder().encode(positions).value()), expected);
}

TEST(JSONEncoder, encodePositions_oneNotFinite_givesNone) {
    for (const double value : unencodable) {
        EXPECT_EQ(JSONEncoder().encode(RememberedPositions{{1, {1, 2}}, {2, {3, value}}, {3, {4, 5}}}), std::nullopt);
    }
}

}  // namespace
}  // namespace vantrel
