#include "tests/desk/support/ProcessActivity.hpp"

#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace vantrel::desk {

namespace {

/// What stands behind the name in a status file of /proc; empty when the process or thread is gone.
std::string statusField(const std::filesystem::path& file, const std::string& name) {
    std::ifstream status(file);
    std::string line;
    while (std::getline(status, line)) {
        if (line.starts_with(name + ":")) {
            return line.substr(name.size() + 1);
        }
    }
    return {};
}

#if defined(__SANITIZE_THREAD__)
/// The thread sanitizer has a thread in each process that wakes now and then.
constexpr bool countsTheMainThreadOnly = true;
#else
constexpr bool countsTheMainThreadOnly = false;
#endif

std::filesystem::path directoryOf(pid_t process) {
    return std::filesystem::path("/proc") / std::to_string(process);
}

}  // namespace

std::int64_t voluntarySwitches(pid_t process) {
    std::int64_t sum = 0;
    for (const auto& thread : std::filesystem::directory_iterator(directoryOf(process) / "task")) {
        if (countsTheMainThreadOnly && thread.path().filename() != std::to_string(process)) {
            continue;
        }
        std::istringstream field(statusField(thread.path() / "status", "voluntary_ctxt_switches"));
        std::int64_t switches = 0;
        field >> switches;
        sum += switches;
    }
    return sum;
}

using Clock = std::chrono::steady_clock;

bool waitUntilAtRest(pid_t process, Duration quiet, Duration deadline) {
    auto switches = voluntarySwitches(process);
    auto since = Clock::now();
    return waitUntil(
        [&] {
            const auto now = voluntarySwitches(process);
            if (now != switches) {
                switches = now;
                since = Clock::now();
            }
            return Clock::now() - since >= quiet;
        },
        deadline);
}

bool isStopped(pid_t process) {
    return statusField(directoryOf(process) / "status", "State").find('T') != std::string::npos;
}

std::chrono::nanoseconds processorTime(pid_t process) {
    clockid_t clock{};
    timespec time{};
    if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &time) != 0) {
        throw std::runtime_error("the processor time of process " + std::to_string(process) + " cannot be read");
    }
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace vantrel::desk
