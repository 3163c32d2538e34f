#include "helpers/settings/SemanticColors.hpp"

#include <algorithm>
#include <cmath>

namespace vantrel::qt {

namespace {

// Above the 4.5:1 that small text needs, because styles tint the inside of a group box a little.
constexpr double wantedContrast = 5.0;

/// The fraction of the other colour that a mix starts from, and the steps to the text's colour.
constexpr double secondaryFade = 0.40;
constexpr int steps = 20;

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor mixed(const QColor& color, const QColor& other, double otherPart) {
    const auto channel = [otherPart](double own, double others) {
        return static_cast<int>(std::lround(255 * (own * (1 - otherPart) + others * otherPart)));
    };
    return {channel(color.redF(), other.redF()), channel(color.greenF(), other.greenF()),
            channel(color.blueF(), other.blueF())};
}

/// The tint itself or, where it is not readable on the background, as little of the text's colour mixed in as will do.
QColor readable(const QColor& tint, const QColor& text, const QColor& background) {
    for (int step = 0; step < steps; ++step) {
        const QColor candidate = mixed(tint, text, static_cast<double>(step) / steps);
        if (contrastRatio(candidate, background) >= wantedContrast) {
            return candidate;
        }
    }
    return text;
}

}  // namespace

double contrastRatio(const QColor& first, const QColor& second) {
    const double one = luminance(first);
    const double other = luminance(second);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

QColor semanticColor(SemanticColor color, const QPalette& palette) {
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor background = palette.color(QPalette::Active, QPalette::Window);
    switch (color) {
        case SemanticColor::secondaryLabel:
            return readable(mixed(text, background, secondaryFade), text, background);
        case SemanticColor::systemRed: {
            const bool isDark = luminance(background) < luminance(text);
            return readable(isDark ? QColor(255, 69, 58) : QColor(215, 0, 21), text, background);
        }
        case SemanticColor::label:
            break;
    }
    return text;
}

}  // namespace vantrel::qt
