#pragma once

#include <chrono>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::backend {

using Clock = std::chrono::steady_clock;

/// A method on the bus.
struct BusMethod {
    const char* service;
    const char* path;
    const char* interface;
    const char* name;
};

/// Calls it and waits for the answer, of that type; null when there is none until the deadline. Takes floating
/// arguments over, and starts no service.
GVariantPointer callUntil(Clock::time_point deadline, GDBusConnection* bus, const BusMethod& method,
                          GVariant* arguments, const char* answerType);

}  // namespace vantrel::backend
