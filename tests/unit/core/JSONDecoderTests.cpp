// What every stored form has in common: which texts are JSON at all, and which numbers.
#include "VantrelCore/JSONDecoder.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "tests/unit/core/JSONSamples.hpp"

namespace vantrel {
namespace {

using namespace std::string_literals;

std::string repeated(const std::string& unit, std::size_t count) {
    std::string text;
    text.reserve(unit.size() * count);
    for (std::size_t index = 0; index < count; ++index) {
        text += unit;
    }
    return text;
}

/// Texts that are no JSON at all, or hold what no JSON may hold, whatever the form that is expected.
std::vector<std::string> damagedTexts() {
    return {
        "",
        " ",
        "\0"s,
        "null",
        "true",
        "7",
        "\"x\"",
        "{",
        "[",
        "}",
        "{\"x\":1,\"y\":2",
        "{\"x\":1,\"y\":2}}",
        "{\"x\":1,\"y\":2}\0"s,
        "{\"x\":1,\"y\":2}\0garbage"s,
        "\0{\"x\":1,\"y\":2}"s,
        "{\"x\":1,\"y\":2,}",
        "{\"x\":1 \"y\":2}",
        "{'x':1,'y':2}",
        "{x:1,y:2}",
        "/**/{\"x\":1,\"y\":2}",
        "{\"x\":1,\"y\":2,\"z\":\"\xFF\"}",
        "{\"x\":1,\"y\":2,\"z\":\"\xED\xA0\x80\"}",
        "{\"x\":1,\"y\":2,\"\xC0\x80\":0}",
        "{\"x\":1,\"y\":2,\"z\":\"\n\"}",
        "{\"x\":1,\"y\":2,\"z\":\"\\x41\"}",
        "{\"x\":1,\"y\":2,\"z\":\"\\ud80\"}",
        "{\"x\":1,\"y\":2,\"z\":\"\\ud80g\"}",
        "{\"x\":1,\"y\":2,\"z\":\"\\ud800}",
        "{\"x\":1,\"y\":2,\"z\":\"\\ud800\\\"}",
        "{\"x\":1,\"y\":2,\"z\":\"\\ud800\"e}",
        "{\"x\":1,\"y\":2,\"\\ud800\"}",
        "{\"x\":1,\"y\":2,\"\\ud800\"\"z\":0}",
        "{\"x\":1,\"y\":2,\"z\":nul}",
        "{\"x\":1,\"y\":2,\"z\":01e999}",
        "{\"x\":1,\"y\":2,\"z\":1.e999}",
        "{\"x\":1,\"y\":2,\"z\":1e999.5}",
        "{\"x\":1,\"y\":2,\"z\":1e999e1}",
        "{\"x\":1,\"y\":2,\"z\":--1e999}",
        "{\"x\":1,\"y\":2,\"z\":+1e999}",
        "{\"x\":1,\"y\":2,\"z\":nul1e999}",
        "{\"x\":1,\"y\":2,1e999:0}",
        "{\"x\":1,\"y\":2}1e999",
        "\xEF\xBB",
        "\xFF\xFE{\0}\0"s,
    };
}

TEST(JSONDecoder, everyForm_damagedText_givesNone) {
    for (const std::string& text : damagedTexts()) {
        EXPECT_EQ(decoder.decodePoint(text), std::nullopt) << testing::PrintToString(text);
        EXPECT_EQ(decoder.decodeDisplay(text), std::nullopt) << testing::PrintToString(text);
        EXPECT_EQ(decoder.decodeSavedPoint(text), std::nullopt) << testing::PrintToString(text);
        EXPECT_EQ(decoder.decodeSavedPoints(text), std::nullopt) << testing::PrintToString(text);
        EXPECT_EQ(decoder.decodePositions(text), std::nullopt) << testing::PrintToString(text);
    }
}

TEST(JSONDecoder, everyForm_deepNesting_givesNoneAndReturns) {
    constexpr std::size_t depth = 50000;
    for (const std::string& text :
         {repeated("[", depth), repeated("{\"x\":", depth), repeated("[", depth) + repeated("]", depth),
          repeated("{\"1\":", depth) + "1" + repeated("}", depth)}) {
        EXPECT_EQ(decoder.decodePoint(text), std::nullopt);
        EXPECT_EQ(decoder.decodeDisplay(text), std::nullopt);
        EXPECT_EQ(decoder.decodeSavedPoint(text), std::nullopt);
        EXPECT_EQ(decoder.decodeSavedPoints(text), std::nullopt);
        EXPECT_EQ(decoder.decodePositions(text), std::nullopt);
    }
}

TEST(JSONDecoder, decodePoint_deepUnknownMember_isIgnored) {
    constexpr std::size_t depth = 50000;
    const std::string text = R"({"x":1,"deep":)" + repeated("[", depth) + repeated("]", depth) + R"(,"y":2})";
    EXPECT_EQ(decoder.decodePoint(text), VantrelPoint(1, 2));
}

/// Values that JSON can write and that nothing here can hold: numbers beyond all floats, halves of characters.
std::vector<std::string> unreadableValues() {
    return {
        "1e999",
        "-1E+999",
        "123.456e789",
        "1"s + repeated("0", 400),
        R"("\ud800")",
        R"("\uDFFF")",
        R"("\udc00\ud800")",
        R"("\ud800\ud800\udc00")",
        R"("\ud800x\udc00")",
        R"("a\\\ud800\"")",
        R"("\ud83d\u0041")",
        R"([1e999,"\ud800",{"\udfff" : "\ud800","1":[-1e999]}])",
    };
}

TEST(JSONDecoder, everyForm_unknownMembersWithUnreadableValues_areIgnored) {
    for (const std::string& value : unreadableValues()) {
        EXPECT_EQ(decoder.decodePoint(filled(R"({"z":@,"x":1,"zz":@,"y":2,"zzz":@})", value)), VantrelPoint(1, 2))
            << value;
        EXPECT_EQ(decoder.decodeDisplay(filled(R"({"id":7,"minX":1,"minY":2,"z":@,"width":3,"height":4})", value)),
                  (DisplaySnapshot{7, 1, 2, 3, 4}))
            << value;
        const std::string element = filled("{" + idMember + R"(,"name":"P","z":@,"point":{"x":1,"z":@,"y":2}})", value);
        EXPECT_EQ(decoder.decodeSavedPoint(element), decoder.decodeSavedPoint(samplePoint)) << value;
        const auto list = decoder.decodeSavedPoints("[" + samplePoint + "," + element + "]");
        ASSERT_TRUE(list) << value;
        EXPECT_EQ(list->size(), 2U);
        const auto positions = decoder.decodePositions(filled(R"({"5":{"x":1,"y":2,"z":@}})", value));
        ASSERT_TRUE(positions) << value;
        EXPECT_EQ(positions->at("5"), VantrelPoint(1, 2));
    }
}

TEST(JSONDecoder, everyForm_knownMembersWithUnreadableValues_giveNone) {
    for (const std::string& value : unreadableValues()) {
        EXPECT_EQ(decoder.decodePoint(filled(R"({"x":1,"y":@})", value)), std::nullopt) << value;
        EXPECT_EQ(decoder.decodeDisplay(filled(R"({"id":@,"minX":1,"minY":2,"width":3,"height":4})", value)),
                  std::nullopt)
            << value;
        for (const char* form :
             {R"({"id":@,"name":"P","point":{"x":1,"y":2}})", R"({#,"name":@,"point":{"x":1,"y":2}})",
              R"({#,"name":"P","point":@})", R"({#,"name":"P","point":{"x":@,"y":2}})",
              R"({#,"name":"P","point":{"x":1,"y":2},"displayID":@})"}) {
            std::string text = filled(form, value);
            if (const std::size_t place = text.find('#'); place != std::string::npos) {
                text.replace(place, 1, idMember);
            }
            EXPECT_EQ(decoder.decodeSavedPoint(text), std::nullopt) << text;
            EXPECT_EQ(decoder.decodeSavedPoints("[" + samplePoint + "," + text + "]"), std::nullopt) << text;
        }
        EXPECT_EQ(decoder.decodeSavedPoints("[" + value + "]"), std::nullopt) << value;
        EXPECT_EQ(decoder.decodePositions(filled(R"({"5":@})", value)), std::nullopt) << value;
        EXPECT_EQ(decoder.decodePositions(filled(R"({"5":{"x":1,"y":@}})", value)), std::nullopt) << value;
    }
}

TEST(JSONDecoder, decodePoint_unknownMemberWithUnreadableName_isIgnored) {
    for (const char* text : {R"({"\ud800":0,"x":1,"y":2})", "{\"\\ud800\" \t\r\n:0,\"x\":1,\"y\":2}",
                             R"({"x":1,"y":2,"\udc00x":1e999})"}) {
        EXPECT_EQ(decoder.decodePoint(text), VantrelPoint(1, 2)) << text;
    }
}

struct NumberCase {
    std::string text;
    double value;
};

TEST(JSONDecoder, decodePoint_numbersOfAllSpellings_areTheNearestFloats) {
    const NumberCase cases[] = {
        {"0", 0.0},
        {"-0.0", -0.0},
        {"-0e5", -0.0},
        {"10", 10},
        {"10.0", 10},
        {"1e1", 10},
        {"1E+1", 10},
        {"100E-1", 10},
        {"-3", -3},
        {"5.5", 5.5},
        {"1e300", 1e300},
        {"1.7976931348623157e308", std::numeric_limits<double>::max()},
        {"5e-324", std::numeric_limits<double>::denorm_min()},
        {"2e-324", 0.0},
        {"1e-999", 0.0},
        {"-1e-999", -0.0},
        {"9007199254740993", 9007199254740992},
        {"18446744073709551615", 18446744073709551616.0},
        {"-9223372036854775808", -9223372036854775808.0},
        {"123456789012345678901234567890", 123456789012345678901234567890.0},
        {"0."s + repeated("0", 5000) + "1e5001", 1},
        {"1"s + repeated("0", 300), 1e300},
    };
    for (const NumberCase& row : cases) {
        const std::optional<VantrelPoint> point = decoder.decodePoint(filled(R"({"x":@,"y":@})", row.text));
        ASSERT_TRUE(point) << row.text;
        EXPECT_EQ(point->x, row.value) << row.text;
        EXPECT_EQ(point->y, row.value) << row.text;
        EXPECT_EQ(std::signbit(point->x), std::signbit(row.value)) << row.text;
    }
}

TEST(JSONDecoder, decodePoint_noCoordinate_givesNone) {
    for (const std::string& value : {"null"s,  "true"s,     "\"1\""s,
                                     "[1]"s,   "{}"s,       "{\"x\":1}"s,
                                     "1e999"s, "-1e999"s,   "1"s + repeated("0", 400),
                                     "NaN"s,   "Infinity"s, "-Infinity"s,
                                     "inf"s,   "01"s,       "+1"s,
                                     "1."s,    ".5"s,       "-"s,
                                     "1e"s,    "0x10"s,     "1,5"s,
                                     "1 2"s,   ""s}) {
        EXPECT_EQ(decoder.decodePoint(filled(R"({"x":@,"y":1})", value)), std::nullopt) << value;
        EXPECT_EQ(decoder.decodePoint(filled(R"({"x":1,"y":@})", value)), std::nullopt) << value;
    }
}

TEST(JSONDecoder, decodePoint_memberMissing_givesNone) {
    for (const char* text :
         {"{}", R"({"x":1})", R"({"y":1})", R"({"X":1,"y":2})", R"({"x ":1,"y":2})", "[1,2]", "[]"}) {
        EXPECT_EQ(decoder.decodePoint(text), std::nullopt) << text;
    }
}

TEST(JSONDecoder, decodePoint_otherOrderSpacesAndUnknownMembers_areNoMatter) {
    for (const char* text :
         {R"({"y":2,"x":1})", " \t\r\n{ \"x\" : 1 , \"y\" : 2 } \n", "\xEF\xBB\xBF{\"x\":1,\"y\":2}",
          R"({"z":{"x":9,"y":[null]},"x":1,"":0,"y":2,"u":"\u0000"})", R"({"\u0078":1,"\u0079":2})"}) {
        EXPECT_EQ(decoder.decodePoint(text), VantrelPoint(1, 2)) << text;
    }
}

TEST(JSONDecoder, decodePoint_memberTwice_theLastCounts) {
    EXPECT_EQ(decoder.decodePoint(R"({"x":"no","x":9,"y":2,"x":1})"), VantrelPoint(1, 2));
    EXPECT_EQ(decoder.decodePoint(R"({"x":1,"y":2,"x":null})"), std::nullopt);
}

}  // namespace
}  // namespace vantrel
