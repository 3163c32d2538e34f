// Loaded into the agent beforehand (LD_PRELOAD): its requests to give back pages go through, or, with
// VANTREL_BENCH_KEEP_PAGES in the environment, do nothing.
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>

extern "C" int madvise(void* address, std::size_t length, int advice) noexcept {
    if (std::getenv("VANTREL_BENCH_KEEP_PAGES") != nullptr) {
        return 0;
    }
    return static_cast<int>(syscall(SYS_madvise, address, length, advice));
}
