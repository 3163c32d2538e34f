#pragma once

#include <cstdint>

#include <benchmark/benchmark.h>

namespace vantrel {

/// How often this process has asked for memory so far.
std::uint64_t allocationCount();

/// Reports the allocations of each round of a benchmark beside its time. Made right before the measured loop.
class AllocationCounter {
  public:
    explicit AllocationCounter(benchmark::State& state) : state_(state), before_(allocationCount()) {}
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;
    ~AllocationCounter() {
        state_.counters["allocations"] =
            benchmark::Counter(static_cast<double>(allocationCount() - before_), benchmark::Counter::kAvgIterations);
    }

  private:
    benchmark::State& state_;
    std::uint64_t before_;
};

}  // namespace vantrel
