#include "Vantrel/Backends/Common/KeyPlaces.hpp"

#include <gtest/gtest.h>

#include <set>

namespace vantrel::backend {
namespace {

TEST(KeyPlaces, xkbNamesForVirtualKey_keyOfAShortcut_isItsPlace) {
    EXPECT_EQ(xkbNamesForVirtualKey(2), (std::vector<std::string_view>{"AC03"}));   // D
    EXPECT_EQ(xkbNamesForVirtualKey(1), (std::vector<std::string_view>{"AC02"}));   // S
    EXPECT_EQ(xkbNamesForVirtualKey(46), (std::vector<std::string_view>{"AB07"}));  // M
    EXPECT_EQ(xkbNamesForVirtualKey(123), (std::vector<std::string_view>{"LEFT"}));
    EXPECT_EQ(xkbNamesForVirtualKey(124), (std::vector<std::string_view>{"RGHT"}));
    EXPECT_EQ(xkbNamesForVirtualKey(22), (std::vector<std::string_view>{"AE06"}));  // 6 comes before 5
    EXPECT_EQ(xkbNamesForVirtualKey(23), (std::vector<std::string_view>{"AE05"}));
}

TEST(KeyPlaces, xkbNamesForVirtualKey_functionKeysOfAppleKeyboards_standOnTheKeysOfPCs) {
    EXPECT_EQ(xkbNamesForVirtualKey(105), (std::vector<std::string_view>{"PRSC", "FK13"}));
    EXPECT_EQ(xkbNamesForVirtualKey(107), (std::vector<std::string_view>{"SCLK", "FK14"}));
    EXPECT_EQ(xkbNamesForVirtualKey(113), (std::vector<std::string_view>{"PAUS", "FK15"}));
}

TEST(KeyPlaces, xkbNamesForVirtualKey_codeWithoutAPlace_isEmpty) {
    for (const std::uint32_t code : {52U, 63U, 72U, 127U, 4294967295U}) {
        EXPECT_TRUE(xkbNamesForVirtualKey(code).empty()) << code;
    }
}

TEST(KeyPlaces, virtualKeyForXkbName_everyName_givesBackItsCode) {
    std::set<std::string_view> names;
    for (std::uint32_t code = 0; code < 128; ++code) {
        for (const std::string_view name : xkbNamesForVirtualKey(code)) {
            EXPECT_EQ(virtualKeyForXkbName(name), code) << name;
            EXPECT_TRUE(names.insert(name).second) << name << " stands for two codes";
        }
    }
    EXPECT_GT(names.size(), 100U);
}

TEST(KeyPlaces, virtualKeyForXkbName_mediaOrUnknownKey_isNone) {
    for (const std::string_view name : {"MUTE", "VOL+", "I180", "", "AC0", "ac03"}) {
        EXPECT_FALSE(virtualKeyForXkbName(name)) << name;
    }
}

}  // namespace
}  // namespace vantrel::backend
