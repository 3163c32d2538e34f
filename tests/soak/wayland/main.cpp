// A long life in Wayland sessions in minutes: see scripts/soak.
//
//     vantrel-soak-wayland jumps|kills SEED COUNT [SESSION...]
//
// The count is divided among the sessions, which are all that can be had unless some are named.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "tests/soak/wayland/JumpRun.hpp"
#include "tests/soak/wayland/KillRun.hpp"

namespace {

int complainAboutUsage() {
    std::fprintf(stderr, "usage: vantrel-soak-wayland jumps|kills SEED COUNT [SESSION...]\n");
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
    std::vector<std::string> sessions(arguments.begin() + 3, arguments.end());
    if (sessions.empty()) {
        sessions = vantrel::soak::sessionNames();
    }
    const int share = rounds / static_cast<int>(sessions.size());
    if (share < 1) {
        return complainAboutUsage();
    }
    std::printf("%s in Wayland sessions: seed %llu, %d in each\n", arguments[0].c_str(),
                static_cast<unsigned long long>(seed), share);
    std::fflush(stdout);
    try {
        for (const std::string& session : sessions) {
            if (arguments[0] == "jumps") {
                vantrel::soak::JumpRun(session, seed, share).run();
            } else if (arguments[0] == "kills") {
                vantrel::soak::runKills(session, seed, share);
            } else {
                return complainAboutUsage();
            }
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "FAILED, seed %llu: %s\n", static_cast<unsigned long long>(seed), error.what());
        return 1;
    }
    return 0;
}
