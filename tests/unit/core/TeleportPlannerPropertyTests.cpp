#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <vector>

#include "SeededRandom.hpp"
#include "VantrelCore/TeleportPlanner.hpp"

namespace vantrel {
namespace {

using Planner = TeleportPlanner;
using enum TeleportDirection;
using Layout = std::vector<DisplaySnapshot>;

constexpr int rounds = 3000;

/// Up to `most` displays on a coarse grid, so that equal edges, overlaps and gaps are common. Identifiers count up from
/// 1: they tell the given order.
Layout randomLayout(std::mt19937_64& random, std::size_t most) {
    Layout layout(random() % (most + 1));
    std::uint32_t id = 0;
    for (DisplaySnapshot& display : layout) {
        const auto onGrid = [&random](std::uint64_t steps, double step, double start) {
            return start + step * static_cast<double>(random() % steps);
        };
        display = DisplaySnapshot(++id, onGrid(7, 640.5, -1921.5), onGrid(5, 360, -720), onGrid(9, 240, 0.0),
                                  onGrid(9, 135.25, 0.0));
    }
    return layout;
}

VantrelPoint randomPoint(std::mt19937_64& random) {
    return VantrelPoint(static_cast<double>(random() % 12001) / 2 - 3000,
                        static_cast<double>(random() % 8001) / 2 - 2000);
}

bool standsBefore(const DisplaySnapshot& first, const DisplaySnapshot& second) {
    return first.minX < second.minX || (first.minX == second.minX && first.minY < second.minY);
}

TEST(TeleportPlannerProperties, sortedDisplays_randomLayouts_areOrderedStableAndComplete) {
    auto random = seededRandom();
    for (int round = 0; round < rounds; ++round) {
        const Layout layout = randomLayout(random, 20);
        const Layout sorted = Planner::sortedDisplays(layout);
        ASSERT_EQ(sorted.size(), layout.size());
        EXPECT_TRUE(std::is_permutation(sorted.begin(), sorted.end(), layout.begin()));
        for (std::size_t index = 1; index < sorted.size(); ++index) {
            const DisplaySnapshot& left = sorted[index - 1];
            const DisplaySnapshot& right = sorted[index];
            EXPECT_FALSE(standsBefore(right, left));
            EXPECT_TRUE(standsBefore(left, right) || left.id < right.id) << "equal origins keep the given order";
        }
        EXPECT_EQ(Planner::sortedDisplays(sorted), sorted);
    }
}

TEST(TeleportPlannerProperties, sortedDisplays_randomLayouts_agreeWithTheStandardSort) {
    auto random = seededRandom();
    for (int round = 0; round < rounds; ++round) {
        Layout layout = randomLayout(random, 100);
        const Layout sorted = Planner::sortedDisplays(layout);
        std::stable_sort(layout.begin(), layout.end(), standsBefore);
        EXPECT_EQ(sorted, layout);
    }
}

TEST(TeleportPlannerProperties, sortedDisplays_differentGivenOrders_giveTheSameOrderWhereOriginsDiffer) {
    auto random = seededRandom();
    for (int round = 0; round < rounds; ++round) {
        Layout layout = randomLayout(random, 10);
        const auto edges = [](const Layout& displays) {
            std::vector<std::pair<double, double>> result;
            for (const DisplaySnapshot& display : displays) {
                result.emplace_back(display.minX, display.minY);
            }
            return result;
        };
        const auto before = edges(Planner::sortedDisplays(layout));
        std::shuffle(layout.begin(), layout.end(), random);
        EXPECT_EQ(edges(Planner::sortedDisplays(layout)), before);
    }
}

TEST(TeleportPlannerProperties, sortedDisplays_arbitraryBits_keepsEveryDisplay) {
    auto random = seededRandom();
    for (int round = 0; round < rounds; ++round) {
        Layout layout(random() % 40);
        std::uint32_t id = 0;
        for (DisplaySnapshot& display : layout) {
            // One in four is NaN, for which no order exists: nothing may be lost or read out of bounds all the same.
            const double edge = random() % 4 == 0 ? std::nan("") : std::bit_cast<double>(random());
            display = DisplaySnapshot(++id, edge, std::bit_cast<double>(random()), 1, 1);
        }
        std::vector<bool> seen(layout.size() + 1);
        for (const DisplaySnapshot& display : Planner::sortedDisplays(layout)) {
            EXPECT_FALSE(seen[display.id]);
            seen[display.id] = true;
        }
        EXPECT_EQ(static_cast<std::size_t>(std::count(seen.begin(), seen.end(), true)), layout.size());
    }
}

TEST(TeleportPlannerProperties, displayIndex_randomLayouts_isTheFirstThatContainsThePoint) {
    auto random = seededRandom();
    for (int round = 0; round < rounds; ++round) {
        const Layout layout = randomLayout(random, 8);
        const VantrelPoint point = randomPoint(random);
        const auto index = Planner::displayIndex(point, layout);
        const auto found = std::find_if(layout.begin(), layout.end(), [&point](const DisplaySnapshot& display) {
            return point.x >= display.minX && point.x < display.minX + display.width && point.y >= display.minY &&
                   point.y < display.minY + display.height;
        });
        ASSERT_EQ(index.has_value(), found != layout.end());
        if (index) {
            EXPECT_EQ(layout.begin() + static_cast<std::ptrdiff_t>(*index), found);
        }
    }
}

TEST(TeleportPlannerProperties, nearestDisplayIndex_randomLayouts_isTheFirstOfTheClosestCentres) {
    auto random = seededRandom();
    for (int round = 0; round < rounds; ++round) {
        const Layout layout = randomLayout(random, 8);
        const VantrelPoint point = randomPoint(random);
        const auto distance = [&point](const DisplaySnapshot& display) {
            const double across = point.x - (display.minX + display.width / 2);
            const double down = point.y - (display.minY + display.height / 2);
            return across * across + down * down;
        };
        const auto closest = std::min_element(
            layout.begin(), layout.end(),
            [&distance](const auto& first, const auto& second) { return distance(first) < distance(second); });
        const auto index = Planner::nearestDisplayIndex(point, layout);
        ASSERT_EQ(index.has_value(), !layout.empty());
        if (index) {
            EXPECT_EQ(layout.begin() + static_cast<std::ptrdiff_t>(*index), closest);
        }
    }
}

TEST(TeleportPlannerProperties, targetIndex_randomLayouts_isTheNeighbourInTheSortedList) {
    auto random = seededRandom();
    for (int round = 0; round < rounds; ++round) {
        const Layout layout = randomLayout(random, 8);
        const VantrelPoint point = randomPoint(random);
        const Layout sorted = Planner::sortedDisplays(layout);
        const auto right = Planner::targetIndex(point, layout, next);
        const auto left = Planner::targetIndex(point, layout, previous);
        ASSERT_EQ(right.has_value(), !layout.empty());
        ASSERT_EQ(left.has_value(), !layout.empty());
        if (layout.empty()) {
            continue;
        }
        auto current = Planner::displayIndex(point, sorted);
        if (!current) {
            current = Planner::nearestDisplayIndex(point, sorted);
        }
        EXPECT_LT(*right, sorted.size());
        EXPECT_LT(*left, sorted.size());
        EXPECT_EQ(*right, *current + 1 == sorted.size() ? 0 : *current + 1);
        EXPECT_EQ(*left, *current == 0 ? sorted.size() - 1 : *current - 1);
    }
}

/// Whether the point is inside by the margin that the display allows, up to the rounding of its edges.
bool isInside(const VantrelPoint& point, const DisplaySnapshot& display, double margin) {
    const double effective = std::min({margin, display.width / 2, display.height / 2});
    constexpr double rounding = 1e-9;
    return point.x >= display.minX + effective - rounding &&
           point.x <= display.minX + display.width - effective + rounding &&
           point.y >= display.minY + effective - rounding &&
           point.y <= display.minY + display.height - effective + rounding;
}

TEST(TeleportPlannerProperties, targetPoint_randomLayouts_liesInsideTheTarget) {
    auto random = seededRandom();
    for (int round = 0; round < rounds; ++round) {
        const Layout layout = randomLayout(random, 8);
        RememberedPositions remembered;
        for (const DisplaySnapshot& display : layout) {
            if (random() % 2 == 0) {
                remembered[display.id] = randomPoint(random);
            }
        }
        const VantrelPoint pointer = randomPoint(random);
        const TeleportDirection direction = random() % 2 == 0 ? next : previous;
        const auto point = Planner::targetPoint(pointer, layout, direction, remembered);
        ASSERT_EQ(point.has_value(), !layout.empty());
        if (point) {
            const Layout sorted = Planner::sortedDisplays(layout);
            const DisplaySnapshot& target = sorted.at(Planner::targetIndex(pointer, layout, direction).value());
            EXPECT_TRUE(isInside(*point, target, Planner::edgeMargin));
            const auto position = remembered.find(target.id);
            const VantrelPoint wanted = position == remembered.end() ? target.center() : position->second;
            EXPECT_EQ(*point, Planner::clamped(wanted, target, 24));
        }
    }
}

TEST(TeleportPlannerProperties, clamped_randomPointsAndDisplays_liesInsideAndMovesNoFurtherThanNeeded) {
    auto random = seededRandom();
    std::uniform_real_distribution<double> edges(-5000, 5000);
    std::uniform_real_distribution<double> sizes(0, 4000);
    for (int round = 0; round < rounds; ++round) {
        const DisplaySnapshot display(1, edges(random), edges(random), sizes(random), sizes(random) / (round % 50 + 1));
        const VantrelPoint point(edges(random), edges(random));
        const double margin = round % 100;
        const VantrelPoint inside = Planner::clamped(point, display, margin);
        EXPECT_TRUE(isInside(inside, display, margin));
        EXPECT_EQ(Planner::clamped(inside, display, margin), inside) << "clamping again changes nothing";
        if (isInside(point, display, margin + 1e-6)) {
            EXPECT_EQ(inside, point);
        }
    }
}

}  // namespace
}  // namespace vantrel
