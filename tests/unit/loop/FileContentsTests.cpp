#include "Vantrel/Handles/FileContents.hpp"

#include <gtest/gtest.h>

#include <vector>

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
