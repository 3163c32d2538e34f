#include "Vantrel/Handles/TextPieces.hpp"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

TEST(TextPieces, piecesOf_separators_standBetweenPiecesOrAfterTheLast) {
    using Pieces = std::vector<std::string>;
    EXPECT_EQ(piecesOf("", '+'), Pieces());
    EXPECT_EQ(piecesOf("a", '+'), (Pieces{"a"}));
    EXPECT_EQ(piecesOf("a+b", '+'), (Pieces{"a", "b"}));
    EXPECT_EQ(piecesOf("a+b+", '+'), (Pieces{"a", "b"}));
    EXPECT_EQ(piecesOf("+a++b", '+'), (Pieces{"", "a", "", "b"}));
}

TEST(TextPieces, trimmed_blanksAtBothEnds_goAndThoseWithinStay) {
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed(" \t"), "");
    EXPECT_EQ(trimmed("a"), "a");
    EXPECT_EQ(trimmed("\t a b\r\n"), "a b");
}

}  // namespace
}  // namespace vantrel
