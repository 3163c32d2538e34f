// A long life in minutes: see scripts/soak.
//
//     vantrel-soak jumps SEED JUMPS [WRAPPER...]
//     vantrel-soak kills SEED KILLS
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "tests/soak/JumpSoak.hpp"
#include "tests/soak/KillTrial.hpp"

namespace {

int complainAboutUsage() {
    std::fprintf(stderr, "usage: vantrel-soak jumps SEED JUMPS [WRAPPER...] | kills SEED KILLS\n");
    return 2;
}

}  // namespace

int main(int count, char** given) {
    const std::vector<std::string> arguments(given + 1, given + count);
    if (arguments.size() < 3) {
        return complainAboutUsage();
    }
    const std::uint64_t seed = std::strtoull(arguments[1].c_str(), nullptr, 10);
    const int rounds = std::atoi(arguments[2].c_str());
    std::printf("%s: seed %llu, %d rounds\n", arguments[0].c_str(), static_cast<unsigned long long>(seed), rounds);
    std::fflush(stdout);
    if (rounds < 1) {
        return complainAboutUsage();
    }
    try {
        if (arguments[0] == "jumps") {
            vantrel::soak::JumpSoakOptions options{.seed = seed, .jumps = rounds, .agentWrapper = {}};
            options.agentWrapper.assign(arguments.begin() + 3, arguments.end());
            vantrel::soak::JumpSoak(options).run();
        } else if (arguments[0] == "kills") {
            vantrel::soak::runKillTrial(seed, rounds);
        } else {
            return complainAboutUsage();
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "FAILED, seed %llu: %s\n", static_cast<unsigned long long>(seed), error.what());
        return 1;
    }
    return 0;
}
