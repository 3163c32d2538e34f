#include "Vantrel/Backends/Hyprland/HyprlandCommands.hpp"

#include <gtest/gtest.h>

namespace vantrel::hyprland {
namespace {

using wayland::LayoutPoint;

constexpr backend::KeyCombination hyperD{.keyCode = 2, .modifiers = combinationModifiers};
constexpr xkb_keycode_t dPlace = 40;

TEST(HyprlandCommands, positionIn_answer_isThePlace) {
    EXPECT_EQ(positionIn("43, 228"), (LayoutPoint{.x = 43, .y = 228}));
    EXPECT_EQ(positionIn("-400, -1"), (LayoutPoint{.x = -400, .y = -1}));
}

TEST(HyprlandCommands, positionIn_anythingElse_isNone) {
    for (const char* answer : {"", "43", "43,", "43, ", "unknown request", ", 3", "99999999999, 1"}) {
        EXPECT_EQ(positionIn(answer), std::nullopt) << answer;
    }
}

TEST(HyprlandCommands, moveCommand_eachLanguage_namesWholePoints) {
    const LayoutPoint place{.x = -0.25, .y = 33.75};
    EXPECT_EQ(moveCommand(Language::lua, place), "/eval hl.dispatch(hl.dsp.cursor.move({x=-1,y=33}))");
    EXPECT_EQ(moveCommand(Language::keywords, place), "/dispatch movecursor -1 33");
}

TEST(HyprlandCommands, bindCommand_eachLanguage_isOfThePlace) {
    EXPECT_EQ(bindCommand(Language::lua, hyperD, dPlace),
              "/eval vantrel_2_6912_40 = hl.bind(\"CTRL + ALT + SHIFT + SUPER + code:40\", "
              "hl.dsp.event(\"vantrel 2 6912\"))");
    EXPECT_EQ(bindCommand(Language::keywords, hyperD, dPlace),
              "/keyword bind CTRL ALT SHIFT SUPER,code:40,event,vantrel 2 6912");
}

TEST(HyprlandCommands, unbindCommand_eachLanguage_isOfTheSame) {
    EXPECT_EQ(unbindCommand(Language::lua, hyperD, dPlace),
              "/eval if vantrel_2_6912_40 then vantrel_2_6912_40:remove() vantrel_2_6912_40 = nil end");
    EXPECT_EQ(unbindCommand(Language::keywords, hyperD, dPlace), "/keyword unbind CTRL ALT SHIFT SUPER,code:40");
}

TEST(HyprlandCommands, bindingsIn_symbolAndPlace_areTheirs) {
    const Bindings bindings = bindingsIn(
        R"json([{"modmask":77,"submap":"","key":"D","keycode":0,"dispatcher":"exec","arg":"kitty"},)json"
        R"json({"modmask":64,"submap":"resize","key":"","keycode":40,"dispatcher":"HL.Dispatcher(event)","arg":"6"}])json");
    ASSERT_EQ(bindings.configured.size(), 2U);
    EXPECT_EQ(bindings.configured[0],
              (wayland::ConfiguredBinding{.mode = "", .modifiers = 77, .keycode = 0, .keysym = XKB_KEY_d}));
    EXPECT_EQ(bindings.configured[1],
              (wayland::ConfiguredBinding{.mode = "resize", .modifiers = 64, .keycode = 40, .keysym = 0}));
    EXPECT_TRUE(bindings.ours.empty());
}

TEST(HyprlandCommands, bindingsIn_numbersOutOfRange_areNone) {
    const Bindings bindings = bindingsIn(
        R"json([{"modmask":-1e300,"key":"D","keycode":4294967296},{"modmask":-1,"key":"D","keycode":"1"}])json");
    ASSERT_EQ(bindings.configured.size(), 2U);
    for (const auto& binding : bindings.configured) {
        EXPECT_EQ(binding.modifiers, 0U);
        EXPECT_EQ(binding.keycode, 0U);
    }
}

TEST(HyprlandCommands, bindingsIn_whatAnAgentLeftBehind_isOurs) {
    const Bindings bindings =
        bindingsIn(R"json([{"modmask":77,"key":"","keycode":40,"dispatcher":"event","arg":"vantrel 2 6912"},)json"
                   R"json({"modmask":77,"key":"","keycode":41,"dispatcher":"event","arg":"vantrelx 2 6912"}])json");
    EXPECT_EQ(bindings.ours, std::vector{hyperD});
    EXPECT_EQ(bindings.configured.size(), 1U);
}

TEST(HyprlandCommands, bindingsIn_anythingElse_isNone) {
    for (const char* answer :
         {"", "unknown request", "[", "null", "7", R"json({"a":{"modmask":[]}})json", R"json([1,null,"x"])json"}) {
        EXPECT_TRUE(bindingsIn(answer).ours.empty()) << answer;
    }
    // A wrong kind of value is no value.
    const Bindings bindings = bindingsIn(R"json([{"modmask":"x","key":3,"keycode":[],"submap":null}])json");
    ASSERT_EQ(bindings.configured.size(), 1U);
    EXPECT_EQ(bindings.configured[0], wayland::ConfiguredBinding{});
}

TEST(HyprlandCommands, pressedIn_ourEvent_isTheCombination) {
    EXPECT_EQ(pressedIn("custom>>vantrel 2 6912"), hyperD);
}

TEST(HyprlandCommands, pressedIn_otherEvents_areNone) {
    for (const char* event : {"", "custom>>", "custom>>vantrel", "custom>>vantrel 2", "custom>>vantrel 2 6912 ",
                              "custom>>person 2 6912", "activelayout>>vantrel 2 6912", "vantrel 2 6912",
                              "custom>>vantrel -2 6912", "custom>>vantrel 2 99999999999"}) {
        EXPECT_EQ(pressedIn(event), std::nullopt) << event;
    }
}

}  // namespace
}  // namespace vantrel::hyprland
