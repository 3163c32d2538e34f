#include "SystemCallFault.hpp"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <ctime>
#include <utility>

namespace {

std::atomic<int> mainThreadSyncs{0};
std::atomic<int> allSyncs{0};
std::atomic<int> mainThreadSleeps{0};
std::atomic<int> writeError{0};
std::atomic<bool> locksFail{false};

bool isMainThread() {
    return static_cast<pid_t>(::syscall(SYS_gettid)) == ::getpid();
}

void countSync() {
    ++allSyncs;
    mainThreadSyncs += isMainThread() ? 1 : 0;
}

ssize_t failingWrite(int, const void*, size_t) {
    errno = writeError;
    return -1;
}

ssize_t failingPositionedWrite(int, const void*, size_t, off_t) {
    errno = writeError;
    return -1;
}

void* failingMap(void*, size_t, int, int, int, off_t) {
    errno = ENODEV;
    return MAP_FAILED;
}

template <typename Function>
sqlite3_syscall_ptr asSystemCall(Function function) {
    return reinterpret_cast<sqlite3_syscall_ptr>(function);
}

}  // namespace

// Defined in the program, these stand before the C library's for every library of the process.
extern "C" {

int fsync(int descriptor) {
    countSync();
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

int fdatasync(int descriptor) {
    countSync();
    return static_cast<int>(::syscall(SYS_fdatasync, descriptor));
}

// SQLite 3.40 sleeps with usleep, 3.46 with nanosleep.
int nanosleep(const timespec* duration, timespec* remaining) {
    mainThreadSleeps += isMainThread() ? 1 : 0;
    return static_cast<int>(::syscall(SYS_nanosleep, duration, remaining));
}

int usleep(useconds_t microseconds) {
    const timespec duration{microseconds / 1'000'000, static_cast<long>(microseconds % 1'000'000) * 1000};
    return nanosleep(&duration, nullptr);
}

int fcntl(int descriptor, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    if (locksFail && (command == F_SETLK || command == F_GETLK || command == F_SETLKW)) {
        errno = ENOLCK;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_fcntl, descriptor, command, argument));
}

int fcntl64(int descriptor, int command, ...) {
    va_list arguments;
    va_start(arguments, command);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    return fcntl(descriptor, command, argument);
}
}

namespace vantrel::desktop {

std::vector<SystemCallFault::Replacement> SystemCallFault::failingWrites() {
    return {{"write", asSystemCall(&failingWrite)},
            {"pwrite", asSystemCall(&failingPositionedWrite)},
            {"pwrite64", asSystemCall(&failingPositionedWrite)}};
}

SystemCallFault SystemCallFault::fullDisk() {
    writeError = ENOSPC;
    return SystemCallFault(failingWrites());
}

SystemCallFault SystemCallFault::brokenDisk() {
    writeError = EIO;
    return SystemCallFault(failingWrites());
}

SystemCallFault SystemCallFault::noSharedMemory() {
    return SystemCallFault({{"mmap", asSystemCall(&failingMap)}});
}

SystemCallFault SystemCallFault::noLocks() {
    locksFail = true;
    return SystemCallFault({});
}

SystemCallFault::SystemCallFault(std::vector<Replacement> replacements) {
    sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
    for (Replacement& replacement : replacements) {
        const sqlite3_syscall_ptr original = vfs->xGetSystemCall(vfs, replacement.name.c_str());
        if (vfs->xSetSystemCall(vfs, replacement.name.c_str(), replacement.function) == SQLITE_OK) {
            originals_.push_back({std::move(replacement.name), original});
        }
    }
}

SystemCallFault::~SystemCallFault() {
    sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
    for (const Replacement& original : originals_) {
        vfs->xSetSystemCall(vfs, original.name.c_str(), original.function);
    }
    locksFail = false;
}

WaitCounts waitCounts() {
    return {mainThreadSyncs, allSyncs, mainThreadSleeps};
}

}  // namespace vantrel::desktop
