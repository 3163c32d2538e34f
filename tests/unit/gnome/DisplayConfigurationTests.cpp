#include "Vantrel/Backends/Gnome/DisplayConfiguration.hpp"

#include <gtest/gtest.h>

#include <string>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::gnome {
namespace {

/// Two monitors, of which one has a mode that it does not show; `logical` are the displays made of them.
std::vector<wayland::OutputDescription> outputsWith(const std::string& logical, const std::string& properties = "") {
    const std::string text =
        "(uint32 7, [(('DP-1', 'ACME', 'One', '0x1'), "
        "[('1920x1080@60', 1920, 1080, 60.0, 1.0, [1.0], {}), "
        "('2560x1440@60', 2560, 1440, 60.0, 1.0, [1.0], {'is-current': <true>})], {}), "
        "(('eDP-1', 'ACME', 'Two', '0x2'), "
        "[('3024x1964@60', 3024, 1964, 60.0, 2.0, [2.0], {'is-current': <true>})], {}), "
        "(('HDMI-1', 'ACME', 'Off', '0x3'), [('800x600@60', 800, 600, 60.0, 1.0, [1.0], {})], {})], [" +
        logical + "], {" + properties + "})";
    const GVariantPointer state(
        g_variant_parse(G_VARIANT_TYPE(displayStateType), text.c_str(), nullptr, nullptr, nullptr));
    EXPECT_NE(state, nullptr) << text;
    return state ? outputsOf(state.get()) : std::vector<wayland::OutputDescription>();
}

constexpr auto laptop = "(0, 0, 2.0, 0, true, [('eDP-1', 'ACME', 'Two', '0x2')], {})";

TEST(DisplayConfiguration, outputsOf_eachDisplay_isInPoints) {
    const auto outputs =
        outputsWith(std::string(laptop) + ", (1512, 100, 1.25, 0, false, [('DP-1', 'ACME', 'One', '0x1')], {})");
    ASSERT_EQ(outputs.size(), 2U);
    EXPECT_EQ(outputs[0],
              (wayland::OutputDescription{.name = "eDP-1", .width = 1512, .height = 982, .isMain = true, .edid = {}}));
    EXPECT_EQ(outputs[1], (wayland::OutputDescription{
                              .name = "DP-1", .x = 1512, .y = 100, .width = 2048, .height = 1152, .edid = {}}));
}

TEST(DisplayConfiguration, outputsOf_layoutInPixels_isNotDivided) {
    const auto outputs = outputsWith(laptop, "'layout-mode': <uint32 2>");
    ASSERT_EQ(outputs.size(), 1U);
    EXPECT_EQ(outputs[0].width, 3024);
    EXPECT_EQ(outputs[0].height, 1964);
}

TEST(DisplayConfiguration, outputsOf_turned_changesSides) {
    for (const char* transform : {"1", "3", "5", "7"}) {
        const auto outputs =
            outputsWith(std::string("(0, 0, 1.0, ") + transform + ", true, [('DP-1', 'ACME', 'One', '0x1')], {})");
        ASSERT_EQ(outputs.size(), 1U);
        EXPECT_EQ(outputs[0].width, 1440) << transform;
        EXPECT_EQ(outputs[0].height, 2560) << transform;
    }
}

TEST(DisplayConfiguration, outputsOf_mirrored_areBothThere) {
    const auto outputs =
        outputsWith("(0, 0, 1.0, 0, true, [('eDP-1', 'ACME', 'Two', '0x2'), ('DP-1', 'ACME', 'One', '0x1')], {})");
    ASSERT_EQ(outputs.size(), 2U);
    EXPECT_EQ(outputs[0].name, "eDP-1");
    EXPECT_EQ(outputs[1].name, "DP-1");
}

TEST(DisplayConfiguration, outputsOf_oddNumbers_areNoDisaster) {
    EXPECT_TRUE(outputsWith("").empty());
    EXPECT_TRUE(outputsWith("(0, 0, 1.0, 0, true, [('DP-9', '', '', '')], {})").empty()) << "no such monitor";
    const auto outputs = outputsWith("(0, 0, 0.0, 0, true, [('DP-1', 'ACME', 'One', '0x1')], {})");
    ASSERT_EQ(outputs.size(), 1U);
    EXPECT_EQ(outputs[0].width, 2560) << "a scale of nothing is none";
}

TEST(DisplayConfiguration, outputsOf_fractionalScale_isRounded) {
    const auto outputs = outputsWith("(0, 0, 1.5, 0, true, [('eDP-1', 'ACME', 'Two', '0x2')], {})");
    ASSERT_EQ(outputs.size(), 1U);
    EXPECT_EQ(outputs[0].width, 2016);
    EXPECT_EQ(outputs[0].height, 1309);
}

}  // namespace
}  // namespace vantrel::gnome
