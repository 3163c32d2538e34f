#include "helpers/settings/TitleWrapping.hpp"

#include <gtest/gtest.h>

namespace vantrel::qt {
namespace {

std::string wrapped(const std::string& text, int columns) {
    return wrappedShortcut(text, columns, [](std::string_view line) { return static_cast<int>(line.size()); });
}

TEST(TitleWrapping, wrappedShortcut_fits_isOneLine) {
    EXPECT_EQ(wrapped("Hyper + D", 9), "Hyper + D");
    EXPECT_EQ(wrapped("", 9), "");
    EXPECT_EQ(wrapped("A", 9), "A");
}

TEST(TitleWrapping, wrappedShortcut_tooLong_breaksAfterPlusSigns) {
    EXPECT_EQ(wrapped("Ctrl + Option + Command + Right Arrow", 21), "Ctrl + Option +\nCommand + Right Arrow");
    EXPECT_EQ(wrapped("Ctrl + Option + Command + Right Arrow", 20), "Ctrl + Option +\nCommand +\nRight Arrow");
}

TEST(TitleWrapping, wrappedShortcut_nothingToBreak_staysWhole) {
    EXPECT_EQ(wrapped("Press shortcut...", 5), "Press shortcut...");
    EXPECT_EQ(wrapped("Ctrl + Left Arrow", 5), "Ctrl +\nLeft Arrow");
}

TEST(TitleWrapping, wrappedShortcut_linesJoined_giveTheTextBack) {
    const std::string text = "Option + Shift + Command + =";
    for (int columns = 1; columns < 40; ++columns) {
        std::string joined = wrapped(text, columns);
        for (char& character : joined) {
            character = character == '\n' ? ' ' : character;
        }
        EXPECT_EQ(joined, text);
    }
}

}  // namespace
}  // namespace vantrel::qt
