#include "tests/soak/ProcessWeight.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace vantrel::soak {

namespace {

/// More than what a full desk once took must not be there at the end.
constexpr double mostGrowth = 1.03;

long privateDirtyOf(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string word; file >> word;) {
        if (word == "Private_Dirty:") {
            long kibibytes = 0;
            file >> kibibytes;
            return kibibytes;
        }
    }
    throw std::runtime_error("the agent's memory cannot be read");
}

long descriptorsOf(pid_t process) {
    const std::filesystem::path directory = "/proc/" + std::to_string(process) + "/fd";
    return std::distance(std::filesystem::directory_iterator(directory), std::filesystem::directory_iterator());
}

}  // namespace

void keepNothingFreed(desk::Environment& environment) {
    environment.set("GLIBC_TUNABLES", "glibc.malloc.tcache_count=0");
    environment.set("G_SLICE", "always-malloc");
}

ProcessWeight weightOf(pid_t process) {
    return {.privateDirtyKibibytes = privateDirtyOf(process), .openDescriptors = descriptorsOf(process)};
}

void Weighings::checkNothingGrows() const {
    if (weights_.empty()) {
        return;
    }
    const ProcessWeight& first = weights_.front();
    const ProcessWeight& last = weights_.back();
    if (static_cast<double>(last.privateDirtyKibibytes) >
        static_cast<double>(first.privateDirtyKibibytes) * mostGrowth) {
        throw std::runtime_error("the agent's memory has grown");
    }
    if (last.openDescriptors > first.openDescriptors) {
        throw std::runtime_error("the agent keeps descriptors open");
    }
}

}  // namespace vantrel::soak
