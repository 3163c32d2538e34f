#include "tests/desk/support/Wait.hpp"

#include <thread>

namespace vantrel::desk {

bool waitUntil(const std::function<bool()>& condition, Duration deadline) {
    constexpr auto step = std::chrono::milliseconds(1);
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(step);
    }
    return true;
}

}  // namespace vantrel::desk
