#include "Vantrel/Desktop/RestingMemory/MemoryMappings.hpp"

#include <gtest/gtest.h>

namespace vantrel::desktop {
namespace {

TEST(MemoryMappings, unchangedFileMappings_ofAProcess_areCodeAndConstants) {
    constexpr std::string_view smaps =
        "55d000000000-55d000010000 r-xp 00001000 08:01 42                         /usr/bin/vantrel\n"
        "Size:                 64 kB\n"
        "Anonymous:             0 kB\n"
        "VmFlags: rd ex mr mw me sd\n"
        "55d000010000-55d000011000 rw-p 00011000 08:01 42                         /usr/bin/vantrel\n"
        "Anonymous:             4 kB\n"
        "55d000020000-55d000030000 rw-p 00000000 00:00 0                          [heap]\n"
        "Anonymous:            64 kB\n"
        "7f0000000000-7f0000002000 r--p 00000000 08:01 43                         /usr/lib/libgio-2.0.so.0\n"
        "Anonymous:             0 kB\n"
        "7f0000002000-7f0000004000 r--p 00002000 08:01 43                         /usr/lib/libgio-2.0.so.0\n"
        "Anonymous:             8 kB\n"
        "7f0000010000-7f0000018000 rw-s 00000000 08:01 44                         /home/a/defaults.sqlite3-shm\n"
        "Anonymous:             0 kB\n"
        "7f0000020000-7f0000022000 r--s 00000000 08:01 45                         /usr/share/mime/mime.cache\n"
        "Anonymous:             0 kB\n"
        "7ffc00000000-7ffc00002000 r-xp 00000000 00:00 0                          [vdso]\n"
        "Anonymous:             0 kB\n";
    EXPECT_EQ(unchangedFileMappings(smaps),
              (std::vector<FileMapping>{{{0x55d000000000, 0x55d000010000}, "/usr/bin/vantrel"},
                                        {{0x7f0000000000, 0x7f0000002000}, "/usr/lib/libgio-2.0.so.0"}}));
}

TEST(MemoryMappings, unchangedFileMappings_changedPagesInTheSwapSpace_isLeftOut) {
    // What the linker wrote before the mapping became read-only, on a machine that is short of memory.
    constexpr std::string_view smaps =
        "7f0000000000-7f0000002000 r--p 00002000 08:01 43                         /usr/lib/libgio-2.0.so.0\n"
        "Anonymous:             0 kB\n"
        "Swap:                  8 kB\n"
        "SwapPss:               8 kB\n"
        "7f0000002000-7f0000004000 r-xp 00004000 08:01 43                         /usr/lib/libgio-2.0.so.0\n"
        "Anonymous:             0 kB\n"
        "Swap:                  0 kB\n";
    EXPECT_EQ(unchangedFileMappings(smaps),
              (std::vector<FileMapping>{{{0x7f0000002000, 0x7f0000004000}, "/usr/lib/libgio-2.0.so.0"}}));
}

TEST(MemoryMappings, unchangedFileMappings_noText_areNone) {
    EXPECT_TRUE(unchangedFileMappings("").empty());
    EXPECT_TRUE(unchangedFileMappings("\n\nnonsense - r-xp\n12-zz r-xp 0 0 0 /a\n").empty());
}

TEST(MemoryMappings, unchangedFileMappings_cutOffAtTheEnd_takesWhatIsThere) {
    EXPECT_EQ(unchangedFileMappings("1000-2000 r-xp 0 08:01 7 /a").size(), 1U);
    EXPECT_TRUE(unchangedFileMappings("1000-2000 r-xp 0 08:01 7").empty());
}

}  // namespace
}  // namespace vantrel::desktop
