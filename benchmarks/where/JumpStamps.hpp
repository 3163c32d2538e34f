#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace vantrel::bench {

/// The moments that a jump passes through in the agent, in order.
enum class Moment : std::size_t {
    woken,     ///< the wait for the display server is over
    reported,  ///< the press was read and found to be a hot key's
    begun,     ///< the task runs on the next turn of the loop
    asked,     ///< layout and pointer are known
    encoded,   ///< the departure's place is known, and its stored form written
    stored,    ///< the commit is done
    planned,   ///< the target is known
    warped,    ///< the request to move the pointer is on its way
};
inline constexpr std::size_t momentCount = 8;

/// When a jump passed through each, in nanoseconds of the monotonic clock, which all processes share.
using JumpStamps = std::array<std::int64_t, momentCount>;

inline std::int64_t nanosecondsNow() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// Hands the stamps of all jumps from the agent to the benchmark.
void writeStamps(const std::filesystem::path& file, const std::vector<JumpStamps>& jumps);
std::vector<JumpStamps> readStamps(const std::filesystem::path& file);

}  // namespace vantrel::bench
