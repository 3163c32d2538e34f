#include "Vantrel/Handles/FileContents.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <vector>

#include "Vantrel/Handles/FileDescriptor.hpp"
#include "Vantrel/Handles/TextPieces.hpp"

namespace vantrel {
namespace {

std::vector<std::string> piecesOf(std::string_view text) {
    std::vector<std::string> pieces;
    while (const auto piece = takePiece(text, '+')) {
        pieces.emplace_back(*piece);
    }
    return pieces;
}

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

TEST(TakePiece, separators_standBetweenPiecesOrAfterTheLast) {
    using Pieces = std::vector<std::string>;
    EXPECT_EQ(piecesOf(""), Pieces());
    EXPECT_EQ(piecesOf("a"), (Pieces{"a"}));
    EXPECT_EQ(piecesOf("a+b"), (Pieces{"a", "b"}));
    EXPECT_EQ(piecesOf("a+b+"), (Pieces{"a", "b"}));
    EXPECT_EQ(piecesOf("+a++b"), (Pieces{"", "a", "", "b"}));
}

}  // namespace
}  // namespace vantrel
