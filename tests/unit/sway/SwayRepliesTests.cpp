#include <gtest/gtest.h>

#include "Vantrel/Backends/Sway/SwayReplies.hpp"

namespace vantrel::sway {
namespace {

TEST(SwayReplies, allSucceeded_tellsSuccess) {
    EXPECT_TRUE(allSucceeded(R"([ { "success": true }, { "success": true } ])"));
    EXPECT_FALSE(allSucceeded(R"([ { "success": true }, { "success": false, "error": "x" } ])"));
    EXPECT_FALSE(allSucceeded(R"([ {} ])"));
    EXPECT_FALSE(allSucceeded("{"));
    EXPECT_FALSE(allSucceeded(""));
}

TEST(SwayReplies, modesIn_listsThem) {
    EXPECT_EQ(modesIn(R"(["default", "to \"go\""])"), (std::vector<std::string>{"default", "to \"go\""}));
    EXPECT_TRUE(modesIn("7").empty());
    EXPECT_TRUE(modesIn("[7]").empty());
    EXPECT_TRUE(modesIn("[").empty());
}

TEST(SwayReplies, configuration_andItsFile) {
    EXPECT_EQ(configurationIn(R"({"config": "a\nb"})"), "a\nb");
    EXPECT_EQ(configurationIn(R"({"config": 7})"), "");
    EXPECT_EQ(configurationIn("[]"), "");
    EXPECT_EQ(configurationFileIn(R"({"loaded_config_file_name": "\/etc\/sway\/config"})"), "/etc/sway/config");
}

TEST(SwayReplies, pressedCommandIn_ofABindingThatRan) {
    EXPECT_EQ(pressedCommandIn(R"({"change": "run", "binding": {"command": "nop vantrel 2 6912", "input_code": 40}})"),
              "nop vantrel 2 6912");
    EXPECT_EQ(pressedCommandIn(R"({"change": "other", "binding": {"command": "nop vantrel 2 6912"}})"), std::nullopt);
    EXPECT_EQ(pressedCommandIn(R"({"change": "run"})"), std::nullopt);
    EXPECT_EQ(pressedCommandIn(R"({"change": "run", "binding": {}})"), "");
    EXPECT_EQ(pressedCommandIn("nonsense"), std::nullopt);
}

TEST(SwayReplies, changeIn_ofAnEvent) {
    EXPECT_EQ(changeIn(R"({"change": "reload", "current": null})"), "reload");
    EXPECT_EQ(changeIn("[]"), "");
}

}  // namespace
}  // namespace vantrel::sway
