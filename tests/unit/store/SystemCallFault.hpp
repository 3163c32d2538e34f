#pragma once

#include <sqlite3.h>

#include <string>
#include <vector>

namespace vantrel::desktop {

/// Makes system calls of SQLite's file system fail in this process, as a sick disk would, until it is destroyed. Works
/// for every user and on every machine.
class SystemCallFault {
  public:
    /// Writes fail: the disk is full.
    static SystemCallFault fullDisk();
    /// Writes fail: the device does not answer.
    static SystemCallFault brokenDisk();
    /// The memory that a log's users share cannot be had.
    static SystemCallFault noSharedMemory();
    /// The file system takes no locks.
    static SystemCallFault noLocks();

    ~SystemCallFault();
    SystemCallFault(const SystemCallFault&) = delete;
    SystemCallFault& operator=(const SystemCallFault&) = delete;

  private:
    struct Replacement {
        std::string name;
        sqlite3_syscall_ptr function;
    };
    static std::vector<Replacement> failingWrites();
    explicit SystemCallFault(std::vector<Replacement> replacements);

    std::vector<Replacement> originals_;
};

/// How many times this process waited so far: for the disk (fsync, fdatasync), and asleep until a lock is free.
struct WaitCounts {
    int mainThreadSyncs = 0;
    int allSyncs = 0;
    int mainThreadSleeps = 0;
};
WaitCounts waitCounts();

}  // namespace vantrel::desktop
