#include "helpers/settings/DesktopFonts.hpp"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <algorithm>
#include <cmath>

#include "Vantrel/Interface/PreferencesWindowLayout.hpp"

namespace vantrel::qt {

namespace {

constexpr double bodyFontSize = 13;

int pixelSize(double points) {
    const double growth = std::max(1.0, QFontInfo(QApplication::font()).pixelSize() / bodyFontSize);
    return static_cast<int>(std::lround(points * growth));
}

}  // namespace

QFont titleFont() {
    QFont font = QApplication::font();
    font.setPixelSize(pixelSize(PreferencesWindowLayout::titleFontSize));
    font.setWeight(QFont::DemiBold);
    return font;
}

QFont recorderFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(pixelSize(PreferencesWindowLayout::recorderFontSize));
    font.setWeight(QFont::Medium);
    return font;
}

}  // namespace vantrel::qt
