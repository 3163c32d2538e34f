#include <vector>

#include <benchmark/benchmark.h>

#include "AllocationCounter.hpp"
#include "VantrelCore/TeleportPlanner.hpp"

namespace vantrel {
namespace {

constexpr double width = 1024;

/// A row of displays, given from the right to the left: the order that costs the sort most.
std::vector<DisplaySnapshot> row(std::size_t count) {
    std::vector<DisplaySnapshot> displays;
    for (std::size_t index = count; index > 0; --index) {
        displays.emplace_back(static_cast<std::uint32_t>(index), static_cast<double>(index) * width, 100, width, 768);
    }
    return displays;
}

RememberedPositions positionsOn(const std::vector<DisplaySnapshot>& displays) {
    RememberedPositions positions;
    for (const DisplaySnapshot& display : displays) {
        positions[display.id] = display.center();
    }
    return positions;
}

/// The argument is the number of displays.
void sortedDisplays(benchmark::State& state) {
    const auto displays = row(static_cast<std::size_t>(state.range(0)));
    const AllocationCounter counter(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(TeleportPlanner::sortedDisplays(displays));
    }
}

void targetPoint(benchmark::State& state) {
    const auto displays = row(static_cast<std::size_t>(state.range(0)));
    const RememberedPositions positions = positionsOn(displays);
    const VantrelPoint pointer = displays.front().center();
    const AllocationCounter counter(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(TeleportPlanner::targetPoint(pointer, displays, TeleportDirection::next, positions));
    }
}

void targetPointFromOutside(benchmark::State& state) {
    const auto displays = row(static_cast<std::size_t>(state.range(0)));
    const RememberedPositions positions = positionsOn(displays);
    const AllocationCounter counter(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            TeleportPlanner::targetPoint(VantrelPoint(-5, -5), displays, TeleportDirection::next, positions));
    }
}

BENCHMARK(sortedDisplays)->Arg(1)->Arg(2)->Arg(8)->Arg(64);
BENCHMARK(targetPoint)->Arg(1)->Arg(2)->Arg(8)->Arg(64);
BENCHMARK(targetPointFromOutside)->Arg(1)->Arg(2)->Arg(8)->Arg(64);

}  // namespace
}  // namespace vantrel
