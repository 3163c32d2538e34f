#pragma once

#include <cstdint>

namespace vantrel::soak {

/// Kills the agent (SIGKILL) so many times, each time at a random moment after something that makes it write, or while
/// it starts, and checks at the next launch that the store holds the state before or after that, and nothing else.
/// Prints what was seen; throws at the first thing that is not as it must be.
void runKillTrial(std::uint64_t seed, int kills);

}  // namespace vantrel::soak
