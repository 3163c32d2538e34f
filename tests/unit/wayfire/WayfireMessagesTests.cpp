#include "Vantrel/Backends/Wayfire/WayfireMessages.hpp"

#include <gtest/gtest.h>

namespace vantrel::wayfire {
namespace {

using wayland::LayoutPoint;

TEST(WayfireMessages, positionIn_answer_isThePlace) {
    EXPECT_EQ(positionIn(R"({"result":"ok","pos":{"x":300.5,"y":-20}})"), (LayoutPoint{.x = 300.5, .y = -20}));
}

TEST(WayfireMessages, bindingIn_answer_isItsNumber) {
    EXPECT_EQ(bindingIn(R"({"result":"ok","binding-id":94069380220592})"), 94069380220592U);
}

TEST(WayfireMessages, pressedIn_event_isTheBindingsNumber) {
    EXPECT_EQ(pressedIn(R"({"event":"command-binding","binding-id":7})"), 7U);
    EXPECT_EQ(pressedIn(R"({"event":"view-focused","binding-id":7})"), std::nullopt);
    EXPECT_EQ(pressedIn(R"({"result":"ok","binding-id":7})"), std::nullopt);
}

TEST(WayfireMessages, canBind_listOfMethods_namesTheMethod) {
    EXPECT_TRUE(canBind(R"({"methods":["list-methods","command/register-binding"]})"));
    EXPECT_FALSE(canBind(R"({"methods":["list-methods"]})"));
}

TEST(WayfireMessages, isEvent_answersAndEvents_areToldApart) {
    EXPECT_TRUE(isEvent(R"({"event":"command-binding"})"));
    EXPECT_FALSE(isEvent(R"({"result":"ok"})"));
}

TEST(WayfireMessages, anythingElse_saysNothing) {
    for (const char* text : {"", "{", "null", "7", "[]", R"({"pos":7,"methods":7,"binding-id":"7"})",
                             R"({"pos":{"x":"1","y":2},"event":3})", R"({"error":"No such method found!"})"}) {
        EXPECT_EQ(positionIn(text), std::nullopt) << text;
        EXPECT_EQ(bindingIn(text), std::nullopt) << text;
        EXPECT_EQ(pressedIn(text), std::nullopt) << text;
        EXPECT_FALSE(isEvent(text)) << text;
        EXPECT_FALSE(canBind(text)) << text;
    }
}

TEST(WayfireMessages, calls_areOfTheMethods) {
    EXPECT_EQ(positionCall(), R"({"data":{},"method":"window-rules/get_cursor_position"})");
    EXPECT_EQ(bindCall("<alt> KEY_D"), R"({"data":{"binding":"<alt> KEY_D"},"method":"command/register-binding"})");
    EXPECT_EQ(unbindCall(7), R"({"data":{"binding-id":7},"method":"command/unregister-binding"})");
}

}  // namespace
}  // namespace vantrel::wayfire
