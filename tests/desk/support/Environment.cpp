#include "tests/desk/support/Environment.hpp"

#include <cstdlib>

namespace vantrel::desk {

Environment Environment::minimal() {
    Environment environment;
    for (const char* name :
         {"PATH", "LANG", "LC_ALL", "TMPDIR", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS"}) {
        if (const char* value = std::getenv(name)) {
            environment.set(name, value);
        }
    }
    return environment;
}

void Environment::giveBackFreedMemory() {
    set("ASAN_OPTIONS",
        "quarantine_size_mb=0:thread_local_quarantine_size_kb=0:allocator_release_to_os_interval_ms=100");
}

std::vector<std::string> Environment::entries() const {
    std::vector<std::string> entries;
    entries.reserve(variables_.size());
    for (const auto& [name, value] : variables_) {
        auto& entry = entries.emplace_back(name);
        entry.append("=").append(value);
    }
    return entries;
}

}  // namespace vantrel::desk
