#include "Vantrel/Handles/FileContents.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <string>

#include "Vantrel/Handles/FileDescriptor.hpp"

namespace vantrel {
namespace {

TEST(FileContents, fileOfTheKernelWithoutASize_isRead) {
    // NUL ends each argument there.
    EXPECT_NE(contentsOf("/proc/self/cmdline").value_or("").find('\0'), std::string::npos);
}

TEST(FileContents, noFile_none) {
    EXPECT_EQ(contentsOf("/nowhere/at/all"), std::nullopt);
    EXPECT_EQ(contentsOf("/proc"), std::nullopt);
}

TEST(FileContents, pipe_isNotWaitedFor) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const FileDescriptor reading(ends[0]);
    const FileDescriptor writing(ends[1]);
    // As a shell names what "<(...)" gives to a program.
    EXPECT_EQ(contentsOf("/proc/self/fd/" + std::to_string(reading.get())), std::nullopt);
}

}  // namespace
}  // namespace vantrel
