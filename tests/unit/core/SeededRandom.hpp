#pragma once

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

namespace vantrel {

/// Random numbers that are the same in every run, so that a failure can be seen again. VANTREL_TEST_SEED in the
/// environment tries others. Prints the seed.
inline std::mt19937_64 seededRandom() {
    constexpr std::uint64_t usualSeed = 20240229;
    const char* const wish = std::getenv("VANTREL_TEST_SEED");
    const std::uint64_t seed = wish == nullptr ? usualSeed : std::stoull(wish);
    std::cout << "VANTREL_TEST_SEED=" << seed << '\n';
    return std::mt19937_64(seed);
}

}  // namespace vantrel
