#include <gtest/gtest.h>

#include "Vantrel/Backends/Wayland/Outputs.hpp"

#include "Vantrel/Backends/Wayland/OutputLayout.hpp"

namespace vantrel::wayland {
namespace {

OutputDescription output(const std::string& name, int x, int y, int width, int height) {
    return {.name = name, .x = x, .y = y, .width = width, .height = height, .transform = 0, .edid = {}};
}

TEST(OutputLayout, layoutOfOutputs_oneAtTheOrigin_isTheMainDisplay) {
    const auto layout = layoutOfOutputs({output("DP-1", -1024, -100, 1024, 768), output("DP-2", 0, 0, 1512, 982)});
    EXPECT_EQ(layout.originX, 0);
    EXPECT_EQ(layout.originY, 0);
    ASSERT_EQ(layout.displays.size(), 2U);
    EXPECT_EQ(layout.displays[0].bounds.origin.x, -1024);
    EXPECT_EQ(layout.displays[0].bounds.origin.y, -100);
}

TEST(OutputLayout, layoutOfOutputs_noneAtTheOrigin_theFirstByNameIsTheMainDisplay) {
    const auto layout = layoutOfOutputs({output("HDMI-A-1", 100, 50, 800, 600), output("DP-1", 900, 50, 800, 600)});
    EXPECT_EQ(layout.originX, 900);
    EXPECT_EQ(layout.originY, 50);
    ASSERT_EQ(layout.displays.size(), 2U);
    EXPECT_EQ(layout.displays[0].bounds.origin.x, 0);
    EXPECT_EQ(layout.displays[1].bounds.origin.x, -800);
}

TEST(OutputLayout, layoutOfOutputs_notYetKnown_doesNotCount) {
    EXPECT_TRUE(layoutOfOutputs({output("DP-1", 0, 0, 0, 0)}).displays.empty());
    EXPECT_TRUE(layoutOfOutputs({}).displays.empty());
}

TEST(OutputLayout, layoutOfOutputs_mirror_countsOnce) {
    EXPECT_EQ(layoutOfOutputs({output("DP-1", 0, 0, 800, 600), output("DP-2", 0, 0, 640, 480)}).displays.size(), 1U);
}

TEST(OutputLayout, cornerOfOutputs_negativeCoordinates_isTheLeastOfEach) {
    const LayoutPoint corner = cornerOfOutputs({output("DP-1", 0, 0, 800, 600), output("DP-2", -640, 100, 640, 480)});
    EXPECT_EQ(corner, (LayoutPoint{-640, 0}));
    EXPECT_EQ(cornerOfOutputs({}), (LayoutPoint{0, 0}));
    EXPECT_EQ(cornerOfOutputs({output("DP-1", 30, 20, 800, 600)}), (LayoutPoint{30, 20}));
}

TEST(OutputLayout, placeOfPixel_scaledAndTurned_isInTheLayoutsPoints) {
    OutputDescription scaled = output("DP-1", -640, 100, 640, 480);
    EXPECT_EQ(placeOfPixel(scaled, {10, 10}), std::nullopt) << "until the size is known";
    scaled.pixelsWide = 1280;
    scaled.pixelsHigh = 960;
    EXPECT_EQ(placeOfPixel(scaled, {100, 50}), (LayoutPoint{-590, 125}));
    OutputDescription turned = output("DP-2", 0, 0, 600, 800);
    turned.transform = 3;
    turned.pixelsWide = 1000;
    turned.pixelsHigh = 750;
    EXPECT_EQ(placeOfPixel(turned, {75, 100}), (LayoutPoint{60, 80}));
}

TEST(OutputLayout, outputAt_pointOnAndOffTheOutputs_isTheOneThatHoldsItOrTheNearest) {
    const std::vector<Output> outputs{
        {.global = 1, .handle = nullptr, .description = output("DP-1", 0, 0, 800, 600)},
        {.global = 2, .handle = nullptr, .description = output("DP-2", 800, 0, 640, 480)}};
    EXPECT_EQ(outputAt(outputs, {799.9, 10}).global, 1U);
    EXPECT_EQ(outputAt(outputs, {800, 10}).global, 2U);
    EXPECT_EQ(outputAt(outputs, {-50, 10}).global, 1U);
    EXPECT_EQ(outputAt(outputs, {2000, 2000}).global, 2U);
}

}  // namespace
}  // namespace vantrel::wayland
