// Gets in the way of others until it is ended: "busy" keeps a core busy, "write FILE" writes the file again and again
// and waits for the disk after each megabyte.
#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {

constexpr std::size_t blockSize = 1 << 20;
constexpr int blocksInFile = 64;

int keepBusy() {
    std::uint64_t last = 1;
    while (true) {
        last = last * 6364136223846793005U + 1;
        std::atomic_signal_fence(std::memory_order_seq_cst);
    }
}

int writeWithoutEnd(const char* path) {
    const std::vector<char> block(blockSize, 'x');
    const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0) {
        std::perror(path);
        return 1;
    }
    for (int number = 0;; number = (number + 1) % blocksInFile) {
        if (pwrite(file, block.data(), block.size(), static_cast<off_t>(number) * static_cast<off_t>(blockSize)) < 0 ||
            fdatasync(file) != 0) {
            std::perror(path);
            return 1;
        }
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count == 2 && std::strcmp(arguments[1], "busy") == 0) {
        return keepBusy();
    }
    if (count == 3 && std::strcmp(arguments[1], "write") == 0) {
        return writeWithoutEnd(arguments[2]);
    }
    std::fprintf(stderr, "usage: %s busy | write FILE\n", arguments[0]);
    return 2;
}
