#include "Vantrel/Desktop/StatusItem/ItemIcon.hpp"

#include <algorithm>
#include <cmath>

namespace vantrel::desktop {

namespace {

// The drawing of data/icons (org.vantrel.Vantrel.svg), on a field of 64 by 64 units.
struct Point {
    double x;
    double y;
};

constexpr double fieldSize = 64;
constexpr double badgeRadius = 14;
constexpr std::uint32_t badgeColor = 0x2F6BD8;
constexpr std::uint32_t glyphColor = 0xFFFFFF;
constexpr std::array pointerOutline{Point{32, 8},  Point{32, 48},   Point{40, 40}, Point{46, 54},
                                    Point{53, 51}, Point{47, 37.5}, Point{58, 37}};
struct Bar {
    Point topLeft;
    Point bottomRight;
};
constexpr std::array motionBars{Bar{{8, 16}, {24, 20}}, Bar{{12, 32}, {24, 36}}};

constexpr int linesPerRow = 8;  // of pixels: what a row covers is the mean of these

/// What a shape covers of one line.
struct Span {
    double begin;
    double end;
};

Span badgeSpan(double y) {
    constexpr double straight = fieldSize / 2 - badgeRadius;
    const double fromStraight = std::max(std::abs(y - fieldSize / 2) - straight, 0.0);
    const double half = straight + std::sqrt(badgeRadius * badgeRadius - fromStraight * fromStraight);
    return {fieldSize / 2 - half, fieldSize / 2 + half};
}

/// The pointer and the bars, which lie apart from each other and within the badge.
std::vector<Span> glyphSpans(double y) {
    std::vector<double> crossings;
    Point previous = pointerOutline.back();
    for (const Point corner : pointerOutline) {
        if ((corner.y > y) != (previous.y > y)) {
            crossings.push_back((previous.x - corner.x) * (y - corner.y) / (previous.y - corner.y) + corner.x);
        }
        previous = corner;
    }
    std::sort(crossings.begin(), crossings.end());
    std::vector<Span> spans;
    for (std::size_t index = 0; index + 1 < crossings.size(); index += 2) {
        spans.push_back({crossings[index], crossings[index + 1]});
    }
    for (const Bar& bar : motionBars) {
        if (y >= bar.topLeft.y && y < bar.bottomRight.y) {
            spans.push_back({bar.topLeft.x, bar.bottomRight.x});
        }
    }
    return spans;
}

/// Adds to each pixel of a row the share of it that the span covers. The span is in pixels.
void addCover(std::vector<double>& row, Span span) {
    for (auto column = static_cast<std::size_t>(span.begin); column < row.size(); ++column) {
        const auto left = static_cast<double>(column);
        const double covered = std::min(span.end, left + 1) - std::max(span.begin, left);
        if (covered <= 0) {
            break;
        }
        row[column] += covered / linesPerRow;
    }
}

std::uint32_t mixedColor(double glyphShare) {
    std::uint32_t color = 0;
    for (const unsigned shift : {16U, 8U, 0U}) {
        const double from = (badgeColor >> shift) & 0xFFU;
        const double to = (glyphColor >> shift) & 0xFFU;
        color |= static_cast<std::uint32_t>(std::lround(from + (to - from) * glyphShare)) << shift;
    }
    return color;
}

std::uint32_t pixel(double badgeShare, double glyphShare) {
    const auto alpha = static_cast<std::uint32_t>(std::lround(255.0 * badgeShare));
    return alpha == 0 ? 0 : (alpha << 24U) | mixedColor(std::min(glyphShare / badgeShare, 1.0));
}

}  // namespace

std::vector<std::uint32_t> itemIconPixels(int size) {
    const double pixelsPerUnit = size / fieldSize;
    const auto inPixels = [&](Span span) { return Span{span.begin * pixelsPerUnit, span.end * pixelsPerUnit}; };
    const auto columns = static_cast<std::size_t>(size);
    std::vector<std::uint32_t> pixels;
    pixels.reserve(columns * columns);
    for (int row = 0; row < size; ++row) {
        std::vector<double> badge(columns);
        std::vector<double> glyph(columns);
        for (int line = 0; line < linesPerRow; ++line) {
            const double y = (row + (line + 0.5) / linesPerRow) / pixelsPerUnit;
            addCover(badge, inPixels(badgeSpan(y)));
            for (const Span& span : glyphSpans(y)) {
                addCover(glyph, inPixels(span));
            }
        }
        for (std::size_t column = 0; column < columns; ++column) {
            pixels.push_back(pixel(badge[column], glyph[column]));
        }
    }
    return pixels;
}

std::vector<std::uint8_t> itemIconBytes(int size) {
    std::vector<std::uint8_t> bytes;
    for (const std::uint32_t pixel : itemIconPixels(size)) {
        for (const unsigned shift : {24U, 16U, 8U, 0U}) {
            bytes.push_back(static_cast<std::uint8_t>(pixel >> shift));
        }
    }
    return bytes;
}

}  // namespace vantrel::desktop
