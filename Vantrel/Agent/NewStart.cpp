#include "Vantrel/Agent/NewStart.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include "Vantrel/Agent/ProgramFile.hpp"

namespace vantrel {

namespace {

constexpr const char* mark = "VANTREL_STARTED_ANEW";

/// The helpers end with their channels; the new start would not know that they are its children.
void awaitHelpers() {
    constexpr std::chrono::milliseconds pause{5};
    constexpr int mostPauses = 100;
    for (int pauses = 0; waitpid(-1, nullptr, WNOHANG) >= 0 && pauses < mostPauses; ++pauses) {
        std::this_thread::sleep_for(pause);
    }
}

}  // namespace

void startAnew(const std::string& windowingSystem) {
    awaitHelpers();
    setenv(mark, windowingSystem.c_str(), 1);
    std::string program = programFile().native();
    const std::array<char*, 2> arguments{program.data(), nullptr};
    execv(program.c_str(), arguments.data());
}

std::optional<std::string> awaitedWindowingSystem() {
    const char* const value = std::getenv(mark);
    const auto windowingSystem = value == nullptr ? std::nullopt : std::optional<std::string>(value);
    unsetenv(mark);
    return windowingSystem;
}

}  // namespace vantrel
