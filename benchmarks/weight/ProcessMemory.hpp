#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace vantrel::bench {

/// What a process weighs, in MB.
struct ProcessMemory {
    double resident = 0;
    double proportional = 0;  ///< resident, with what others share divided among them
    double unique = 0;        ///< what nobody shares: what its end would give back
    double privateDirty = 0;  ///< what only swapping could free
};

/// What a process has done so far.
struct ProcessCounts {
    std::int64_t writtenBytes = 0;  ///< by system calls, whatever the file
    std::int64_t minorFaults = 0;   ///< pages that were in memory and had to be mapped
    std::int64_t majorFaults = 0;   ///< pages that had to be read from the disk
};

/// Throw when the process is gone.
ProcessMemory memoryOf(pid_t process);
ProcessCounts countsOf(pid_t process);

}  // namespace vantrel::bench
