#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "AllocationCounter.hpp"
#include "VantrelCore/JSONDecoder.hpp"
#include "VantrelCore/JSONEncoder.hpp"

namespace vantrel {
namespace {

/// Positions as they are in a store: identifiers are hashes, coordinates whole, or fractions where a scale made them
/// so.
RememberedPositions positions(std::size_t count, double fraction) {
    RememberedPositions result;
    for (std::size_t index = 0; index < count; ++index) {
        const auto number = static_cast<double>(index);
        result[static_cast<std::uint32_t>((index + 1) * 2654435761U)] =
            VantrelPoint(-1020 + number * 7 + fraction, 102 + number * 3 + fraction);
    }
    return result;
}

std::vector<SavedPoint> savedPoints(std::size_t count) {
    std::vector<SavedPoint> result(count);
    for (std::size_t index = 0; index < count; ++index) {
        result[index].id.bytes[0] = static_cast<std::uint8_t>(index);
        result[index].name = "Point " + std::to_string(index + 1);
        result[index].point = VantrelPoint(static_cast<double>(index) * 5, 400);
        result[index].displayID = static_cast<std::uint32_t>(index);
    }
    return result;
}

/// Reports the time of one entry beside that of the whole. The argument is the number of entries.
void countEntries(benchmark::State& state) {
    state.counters["perEntry"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void encodePositions(benchmark::State& state, double fraction) {
    const RememberedPositions map = positions(static_cast<std::size_t>(state.range(0)), fraction);
    const JSONEncoder encoder;
    const AllocationCounter counter(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(encoder.encode(map));
    }
    countEntries(state);
}

void decodePositions(benchmark::State& state, double fraction) {
    const std::string text =
        JSONEncoder().encode(positions(static_cast<std::size_t>(state.range(0)), fraction)).value();
    const JSONDecoder decoder;
    const AllocationCounter counter(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(decoder.decodePositions(text));
    }
    countEntries(state);
}

void encodeSavedPoints(benchmark::State& state) {
    const std::vector<SavedPoint> list = savedPoints(static_cast<std::size_t>(state.range(0)));
    const JSONEncoder encoder;
    const AllocationCounter counter(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(encoder.encode(list));
    }
    countEntries(state);
}

void decodeSavedPoints(benchmark::State& state) {
    const std::string text = JSONEncoder().encode(savedPoints(static_cast<std::size_t>(state.range(0)))).value();
    const JSONDecoder decoder;
    const AllocationCounter counter(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(decoder.decodeSavedPoints(text));
    }
    countEntries(state);
}

/// Displays as people have them, and more than anybody has; points as somebody may have saved them in years.
const std::vector<std::int64_t> entryCounts{1, 2, 8, 64, 1000, 10'000};

BENCHMARK_CAPTURE(encodePositions, whole, 0.0)->ArgsProduct({entryCounts});
BENCHMARK_CAPTURE(encodePositions, fractions, 0.3)->ArgsProduct({entryCounts});
BENCHMARK_CAPTURE(decodePositions, whole, 0.0)->ArgsProduct({entryCounts});
BENCHMARK_CAPTURE(decodePositions, fractions, 0.3)->ArgsProduct({entryCounts});
BENCHMARK(encodeSavedPoints)->ArgsProduct({entryCounts});
BENCHMARK(decodeSavedPoints)->ArgsProduct({entryCounts});

}  // namespace
}  // namespace vantrel
