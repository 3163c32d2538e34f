#include "helpers/settings/SemanticColors.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace vantrel::qt {
namespace {

struct Theme {
    QColor text;
    QColor background;
};

QPalette paletteOf(const Theme& theme) {
    QPalette palette;
    palette.setColor(QPalette::WindowText, theme.text);
    palette.setColor(QPalette::Window, theme.background);
    return palette;
}

/// Light and dark, strong and weak, and with a tint of their own.
const std::vector<Theme> themes{
    {Qt::black, Qt::white},
    {Qt::black, QColor(239, 239, 239)},
    {QColor(46, 52, 54), QColor(246, 245, 244)},
    {QColor(35, 38, 41), QColor(239, 240, 241)},
    {QColor(252, 252, 252), QColor(42, 46, 50)},
    {QColor(238, 238, 236), QColor(53, 53, 53)},
    {Qt::white, Qt::black},
    {QColor(60, 20, 20), QColor(250, 220, 220)},
    {QColor(255, 255, 0), QColor(0, 0, 120)},
};

TEST(SemanticColors, contrastRatio_ends_areTwentyOneAndOne) {
    EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::black), 21, 0.01);
    EXPECT_NEAR(contrastRatio(Qt::red, Qt::red), 1, 0.01);
    EXPECT_NEAR(contrastRatio(QColor(118, 118, 118), Qt::white), 4.54, 0.01);
}

TEST(SemanticColors, semanticColor_everyTheme_isReadable) {
    for (const Theme& theme : themes) {
        SCOPED_TRACE(theme.background.name().toStdString());
        for (const SemanticColor color :
             {SemanticColor::label, SemanticColor::secondaryLabel, SemanticColor::systemRed}) {
            EXPECT_GE(contrastRatio(semanticColor(color, paletteOf(theme)), theme.background), 4.5);
        }
    }
}

TEST(SemanticColors, semanticColor_secondary_isWeakerThanTheText) {
    for (const Theme& theme : themes) {
        const QColor secondary = semanticColor(SemanticColor::secondaryLabel, paletteOf(theme));
        EXPECT_LT(contrastRatio(secondary, theme.background), contrastRatio(theme.text, theme.background));
    }
}

TEST(SemanticColors, semanticColor_red_isRed) {
    for (std::size_t index = 0; index < 7; ++index) {
        const QColor red = semanticColor(SemanticColor::systemRed, paletteOf(themes[index]));
        EXPECT_GT(red.red(), red.green() + 60);
        EXPECT_GT(red.red(), red.blue() + 60);
    }
}

TEST(SemanticColors, semanticColor_themeWithoutContrast_fallsBackToItsText) {
    const Theme weak{QColor(120, 120, 120), QColor(140, 140, 140)};
    EXPECT_EQ(semanticColor(SemanticColor::secondaryLabel, paletteOf(weak)), weak.text);
}

}  // namespace
}  // namespace vantrel::qt
