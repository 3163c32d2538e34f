#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>

#include "tests/desk/support/Wait.hpp"

namespace vantrel::desk {

/// How often the process gave up a processor to wait for something, all of its threads together. It stands still
/// exactly while nothing wakes the process.
std::int64_t voluntarySwitches(pid_t process);

/// Waits until nothing has woken the process for the time; false when something still does at the deadline.
bool waitUntilAtRest(pid_t process, Duration quiet = std::chrono::seconds(1), Duration deadline = generousDeadline);

/// Whether the process is stopped, as SIGSTOP stops it.
bool isStopped(pid_t process);

/// The processor time that the process has used.
std::chrono::nanoseconds processorTime(pid_t process);

}  // namespace vantrel::desk
