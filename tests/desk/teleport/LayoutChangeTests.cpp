// Displays that come, go and move: the next press uses what is there at that moment.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

constexpr MainPoint nearCorner{.x = 3, .y = 3};
/// Where a jump with a single display pulls the pointer from nearCorner.
constexpr MainPoint pulledIn{.x = 24, .y = 24};

PlacedDisplay mainDisplay() {
    return DisplayLayout::twoDisplays()[0];
}

PlacedDisplay secondDisplayAt(int x, int y) {
    return {.output = 1, .bounds = {.x = x, .y = y, .width = 1024, .height = 768}};
}

TEST(LayoutChange, hyperD_secondDisplayOff_staysOnTheOnlyDisplay) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.layout().apply({mainDisplay()});
    desk.pointer().moveTo(nearCorner);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(pulledIn)) << desk.pointer().position();
}

TEST(LayoutChange, hyperD_secondDisplayOffAndOnAgain_findsItsRememberedPosition) {
    Desk desk;
    const auto agent = desk.startAgent();
    constexpr MainPoint onSecond{.x = -300, .y = 400};
    desk.pointer().moveTo(onSecond);
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor({756, 491})) << desk.pointer().position();
    desk.layout().apply({mainDisplay()});
    desk.pointer().moveTo(nearCorner);
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor(pulledIn)) << desk.pointer().position();
    desk.layout().apply(DisplayLayout::twoDisplays());
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(onSecond)) << desk.pointer().position();
}

TEST(LayoutChange, hyperD_secondDisplayMirrors_countsOnce) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.layout().apply({mainDisplay(), secondDisplayAt(0, 0)});
    desk.pointer().moveTo(nearCorner);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(pulledIn)) << desk.pointer().position();
    desk.pointer().moveTo({400, 300});
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().staysAt({400, 300})) << desk.pointer().position();
}

TEST(LayoutChange, hyperD_secondDisplayMovedToTheRight_landsThere) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.layout().apply({mainDisplay(), secondDisplayAt(1512, -200)});
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor({2024, 184})) << desk.pointer().position();
}

TEST(LayoutChange, hyperD_rememberedPositionNowOutside_landsInsideTheMargin) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.pointer().moveTo({-900, 700});
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor({756, 491})) << desk.pointer().position();
    desk.layout().apply({mainDisplay(), secondDisplayAt(1512, 0)});
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor({1512 + 24, 700})) << desk.pointer().position();
}

TEST(LayoutChange, hyperD_displayAddedOnTheLeft_rememberedPositionsStay) {
    Desk desk;
    desk.layout().apply({mainDisplay(), secondDisplayAt(1512, 0)});
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor({2024, 384})) << desk.pointer().position();
    desk.layout().apply({mainDisplay(),
                         secondDisplayAt(1512, 0),
                         {.output = 2, .bounds = {.x = -800, .y = 0, .width = 800, .height = 600}}});
    desk.pointer().moveTo({2000, 300});
    desk.keyboard().type(controlOptionCommand(keys::leftArrow));
    EXPECT_TRUE(desk.pointer().waitFor(onMain)) << desk.pointer().position();
}

TEST(LayoutChange, hyperD_narrowDisplay_landsOnItsMiddleLine) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.layout().apply({mainDisplay(), {.output = 1, .bounds = {.x = -40, .y = 0, .width = 40, .height = 900}}});
    desk.pointer().moveTo({-39, 5});
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor({756, 491})) << desk.pointer().position();
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor({-20, 20})) << desk.pointer().position();
}

TEST(LayoutChange, rightArrow_sixteenDisplays_goesRoundThemAll) {
    Desk desk;
    std::vector<PlacedDisplay> displays;
    for (int output = 0; output < DisplayLayout::outputCount; ++output) {
        displays.push_back({.output = output, .bounds = {.x = 480 * output, .y = 0, .width = 480, .height = 360}});
    }
    desk.layout().apply(displays);
    const auto agent = desk.startAgent();
    constexpr MainPoint start{.x = 100, .y = 100};
    desk.pointer().moveTo(start);
    for (int display = 1; display < DisplayLayout::outputCount; ++display) {
        desk.keyboard().type(controlOptionCommand(keys::rightArrow));
        const MainPoint centre{.x = 480 * display + 240, .y = 180};
        ASSERT_TRUE(desk.pointer().waitFor(centre)) << centre << desk.pointer().position();
    }
    desk.keyboard().type(controlOptionCommand(keys::rightArrow));
    EXPECT_TRUE(desk.pointer().waitFor(start)) << desk.pointer().position();
}

/// A row of displays of random sizes and heights, the main one anywhere in it.
class RandomRow {
  public:
    explicit RandomRow(std::mt19937& random) {
        const int count = between(random, 2, 5);
        const int main = between(random, 0, count - 1);
        int x = 0;
        for (int output = 0; output < count; ++output) {
            const MainRect bounds{.x = x,
                                  .y = between(random, -300, 300),
                                  .width = 8 * between(random, 4, 150),
                                  .height = between(random, 30, 900)};
            displays_.push_back({.output = output, .bounds = bounds});
            x += bounds.width;
        }
        const auto origin = displays_[static_cast<std::size_t>(main)].bounds;
        for (auto& display : displays_) {
            display.bounds.x -= origin.x;
            display.bounds.y -= origin.y;
        }
        mainFirst_ = displays_;
        std::rotate(mainFirst_.begin(), mainFirst_.begin() + main, mainFirst_.begin() + main + 1);
    }

    [[nodiscard]] const std::vector<PlacedDisplay>& leftToRight() const { return displays_; }
    [[nodiscard]] const std::vector<PlacedDisplay>& mainFirst() const { return mainFirst_; }

  private:
    static int between(std::mt19937& random, int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    }

    std::vector<PlacedDisplay> displays_;
    std::vector<PlacedDisplay> mainFirst_;
};

bool isInsideMargin(MainPoint point, const MainRect& display) {
    const double margin = std::min({24.0, display.width * 0.5, display.height * 0.5});
    // The server rounds down what stands between two pixels.
    const double low = 1.0;
    return point.x > display.x + margin - low && point.x <= display.x + display.width - margin &&
           point.y > display.y + margin - low && point.y <= display.y + display.height - margin;
}

TEST(LayoutChange, rightArrow_randomLayouts_landsInsideTheNextDisplay) {
    constexpr int layouts = 12;
    constexpr unsigned seed = 20;
    std::mt19937 random(seed);
    Desk desk;
    const auto agent = desk.startAgent();
    for (int round = 0; round < layouts; ++round) {
        const RandomRow row(random);
        desk.layout().apply(row.mainFirst());
        for (std::size_t index = 0; index < row.leftToRight().size(); ++index) {
            const auto& from = row.leftToRight()[index].bounds;
            const auto& to = row.leftToRight()[(index + 1) % row.leftToRight().size()].bounds;
            const MainPoint corner{.x = from.x + from.width - 1, .y = from.y};
            desk.pointer().moveTo(corner);
            desk.keyboard().type(controlOptionCommand(keys::rightArrow));
            ASSERT_TRUE(waitUntil([&] { return isInsideMargin(desk.pointer().position(), to); }))
                << "layout " << round << ", display " << index << ", " << desk.pointer().position();
        }
    }
}

}  // namespace
}  // namespace vantrel::desk
