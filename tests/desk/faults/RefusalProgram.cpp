// Runs a program as on a file system that lacks something: the kernel refuses the calls to it and to all that it
// starts.
//
//     vantrel-test-refusal locks|sharedMemory PROGRAM ARGUMENT...
//
// The refusal comes from the kernel (a system call filter) and not from a library that is put before the program, so it
// is the same whatever the program was built with.
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <vector>

namespace {

using Filter = std::vector<sock_filter>;

/// Makes the filter go on only with what is one of the values; everything else is allowed.
struct Condition {
    std::uint32_t offset;  ///< in seccomp_data
    std::vector<std::uint32_t> values;
};

constexpr std::uint32_t callNumber = offsetof(seccomp_data, nr);

/// Where the lower half of an argument lies.
constexpr std::uint32_t argument(std::uint32_t index) {
    constexpr std::uint32_t lowerHalf = std::endian::native == std::endian::big ? 4 : 0;
    return static_cast<std::uint32_t>(offsetof(seccomp_data, args)) + index * 8 + lowerHalf;
}

Filter refusal(const std::vector<Condition>& conditions, std::uint32_t error) {
    Filter filter;
    for (const Condition& condition : conditions) {
        filter.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, condition.offset));
        auto left = static_cast<std::uint8_t>(condition.values.size());
        for (const std::uint32_t value : condition.values) {
            // To the statement after the return below.
            filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, value, left, 0));
            --left;
        }
        filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    }
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | error));
    return filter;
}

/// As NFS without its lock service.
Filter noLocks() {
    return refusal({{callNumber, {SYS_fcntl}},
                    {argument(1), {F_GETLK, F_SETLK, F_SETLKW, F_OFD_GETLK, F_OFD_SETLK, F_OFD_SETLKW}}},
                   ENOLCK);
}

/// As FUSE with direct access. Known by its size, because the filter does not see which file is mapped: SQLite takes
/// the memory of a log's users in pieces of 32 KiB.
Filter noSharedMemory() {
    constexpr std::uint32_t piece = 32 * 1024;
    return refusal({{callNumber, {SYS_mmap}},
                    {argument(1), {piece}},
                    {argument(2), {PROT_READ | PROT_WRITE}},
                    {argument(3), {MAP_SHARED}}},
                   ENODEV);
}

bool install(Filter filter) {
    const sock_fprog program{.len = static_cast<unsigned short>(filter.size()), .filter = filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        return 2;
    }
    const std::string_view lack = arguments[1];
    if (lack != "locks" && lack != "sharedMemory") {
        return 2;
    }
    if (!install(lack == "locks" ? noLocks() : noSharedMemory())) {
        std::perror("no system call filter");
        return 1;
    }
    execvp(arguments[2], arguments + 2);
    std::perror(arguments[2]);
    return 127;
}
