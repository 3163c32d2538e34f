// Which names are UTF-8, and so have a stored form.
#include "VantrelCore/JSONEncoder.hpp"

#include <gtest/gtest.h>

#include <string>

namespace vantrel {
namespace {

using namespace std::string_literals;

bool isEncodable(const std::string& name) {
    SavedPoint point;
    point.name = name;
    return JSONEncoder().encode(point).has_value();
}

TEST(JSONEncoderUTF8, encode_wellFormedName_isEncoded) {
    for (const std::string& text :
         {""s, "Point 1"s, "\0"s, "\x7F"s, "Grüße"s, "\xC2\x80"s, "\xDF\xBF"s, "\xE0\xA0\x80"s, "\xED\x9F\xBF"s,
          "\xEE\x80\x80"s, "\xEF\xBF\xBF"s, "\xF0\x90\x80\x80"s, "\xF4\x8F\xBF\xBF"s, "🖱️ точка 点"s}) {
        EXPECT_TRUE(isEncodable(text)) << testing::PrintToString(text);
    }
}

TEST(JSONEncoderUTF8, encode_malformedName_isRefused) {
    for (const std::string& text : {
             "\x80"s,              // a continuation alone
             "a\xBFz"s,            // in the middle
             "\xC0\x80"s,          // overlong NUL
             "\xC1\xBF"s,          // overlong
             "\xE0\x9F\xBF"s,      // overlong
             "\xF0\x8F\xBF\xBF"s,  // overlong
             "\xED\xA0\x80"s,      // a surrogate
             "\xED\xBF\xBF"s,      // a surrogate
             "\xF4\x90\x80\x80"s,  // above U+10FFFF
             "\xF5\x80\x80\x80"s,  // no such lead
             "\xFF"s,              // no such byte
             "\xC3"s,              // cut short
             "\xE2\x82"s,          // cut short
             "\xF0\x9F\x96"s,      // cut short
             "\xC3\x28"s,          // the second byte is ASCII
             "\xE2\x82\x28"s,      // the third byte is ASCII
             "\xF0\x9F\x96\xC0"s,  // the fourth byte is a lead
             "\xE2\x28\xA1"s,      // the second byte is ASCII
         }) {
        EXPECT_FALSE(isEncodable(text)) << testing::PrintToString(text);
    }
}

/// Counts the sequences of each length by brute force: the numbers are those of the Unicode scalar values.
TEST(JSONEncoderUTF8, encode_allSequencesOfTwoAndThreeBytes_areAsManyAsUnicodeHas) {
    std::size_t ofTwo = 0;
    std::size_t ofThree = 0;
    for (unsigned lead = 0x80; lead <= 0xFF; ++lead) {
        for (unsigned second = 0; second <= 0xFF; ++second) {
            std::string text{static_cast<char>(lead), static_cast<char>(second)};
            ofTwo += isEncodable(text) ? 1U : 0U;
            text += '\0';
            for (unsigned third = 0x80; third <= 0xFF; ++third) {
                text[2] = static_cast<char>(third);
                ofThree += isEncodable(text) ? 1U : 0U;
            }
        }
    }
    EXPECT_EQ(ofTwo, 0x800U - 0x80U);
    EXPECT_EQ(ofThree, 0x10000U - 0x800U - 0x800U);
}

}  // namespace
}  // namespace vantrel
