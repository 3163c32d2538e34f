// Whether a sound holds up the pointer: the jump with sound off, with a sound server that plays it, without any, and
// with one that hangs. A press each 150 ms, as fast as a hand does it on purpose.
//
//     vantrel-bench-sound [PRESSES [ROUNDS]]
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "benchmarks/support/Arguments.hpp"
#include "benchmarks/support/Candidates.hpp"
#include "benchmarks/support/Comparison.hpp"
#include "tests/desk/sound/SoundServer.hpp"

namespace vantrel::bench {
namespace {

enum class Server { none, runs, hangs };

struct Condition {
    std::string name;
    bool hasSound = true;
    Server server = Server::none;
};

PressTimes measure(desk::Desk& desk, const Condition& condition, int presses) {
    const std::filesystem::path directory = desk.home().path() / "sound";
    std::filesystem::remove_all(directory);
    std::unique_ptr<desk::SoundServer> server;
    if (condition.server != Server::none) {
        server = std::make_unique<desk::SoundServer>(desk.environment(), directory);
    }
    if (condition.server == Server::hangs) {
        server->stop();
    }
    desk.defaults().writeInteger("soundEnabled", condition.hasSound ? 1 : 0);
    const Course course = usualCourse();
    const Candidate candidate = vantrelCandidate();
    PressTimes times;
    {
        const auto agent = candidate.start(desk, course);
        times = timePresses(
            desk, {.stops = stopsOf(candidate, course), .presses = presses, .pause = std::chrono::milliseconds(150)});
    }
    if (server && condition.server == Server::hangs) {
        server->goOn();
    } else if (server) {
        const std::vector<float> recording = server->recording();
        const bool isHeard = std::any_of(recording.begin(), recording.end(), [](float sample) { return sample != 0; });
        if (isHeard != condition.hasSound) {
            throw std::runtime_error(condition.name + (isHeard ? ": a sound is heard" : ": no sound is heard"));
        }
    }
    return times;
}

void run(int presses, int rounds) {
    desk::Desk desk;
    // No hardware of this machine is to make a sound, and no server is to come up by itself.
    desk.environment().set("ALSA_CONFIG_PATH", "/dev/null");
    std::filesystem::create_directories(desk.home().configuration() / "pulse");
    std::ofstream(desk.home().configuration() / "pulse" / "client.conf") << "autospawn = no\n";
    const std::vector<Condition> conditions{{"sound off, the server runs", false, Server::runs},
                                            {"sound on, the server plays it", true, Server::runs},
                                            {"sound on, no server", true, Server::none},
                                            {"sound on, the server hangs", true, Server::hangs}};
    std::vector<Contender> contenders;
    for (const Condition& condition : conditions) {
        contenders.push_back(
            {condition.name, [&desk, &condition, presses] { return measure(desk, condition, presses); }});
    }
    printComparison("Sound", "sound off", compare(contenders, rounds));
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    return vantrel::bench::runBenchmark(count, arguments, {{"PRESSES", 60, 10}, {"ROUNDS", 5, 1}},
                                        [](const auto& numbers) { vantrel::bench::run(numbers[0], numbers[1]); });
}
