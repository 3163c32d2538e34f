// The agent, made of its real parts, with a clock read between them. Argument: the file that gets the stamps of all
// jumps when it ends.
#include <glib.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include "Vantrel/Agent/AgentPlatform.hpp"
#include "Vantrel/Agent/OneInstance.hpp"
#include "Vantrel/Agent/ProcessSetup.hpp"
#include "Vantrel/Agent/SessionChoice.hpp"
#include "Vantrel/Controller/AppDelegate.hpp"
#include "benchmarks/where/StampedPlatform.hpp"

namespace vantrel::bench {
namespace {

constexpr std::size_t expectedJumps = 20'000;

/// GLib's function for waiting takes no data of its own.
JumpRecorder& recorder() {
    static JumpRecorder theOne(expectedJumps);
    return theOne;
}

gint waitAndStamp(GPollFD* descriptors, guint count, gint timeout) {
    const gint ready = g_poll(descriptors, count, timeout);
    // The turn that runs the task only looks (a timeout of 0): the press was read in the one before.
    if (timeout != 0) {
        recorder().note(Moment::woken);
    } else {
        recorder().noteIfFirst(Moment::woken);
    }
    return ready;
}

int run(const char* file) {
    setUpProcess();
    std::string problem;
    auto display = chooseDisplaySession(problem);
    if (!display || becomeAgentOrHandOver(*display, {}) != StartOutcome::isTheAgent) {
        std::fprintf(stderr, "not the agent of this display: %s\n", problem.c_str());
        return EXIT_FAILURE;
    }
    g_main_context_set_poll_func(nullptr, &waitAndStamp);
    AgentPlatform platform(std::move(display));
    StampedPlatform stamped(platform.abilities(), recorder());
    const auto delegate = AppDelegate::create(stamped.abilities(), vantrelHotKeySignature, &AppDelegate::hotKeyPressed);
    platform.application().setDelegate(delegate);
    const int status = platform.application().run();
    writeStamps(file, recorder().jumps());
    return status;
}

}  // namespace
}  // namespace vantrel::bench

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: %s FILE\n", arguments[0]);
        return 2;
    }
    return vantrel::bench::run(arguments[1]);
}
