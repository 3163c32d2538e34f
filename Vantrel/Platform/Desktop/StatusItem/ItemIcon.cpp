#include "Vantrel/Platform/Desktop/StatusItem/ItemIcon.hpp"

#include <algorithm>
#include <cmath>
#include <span>

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

constexpr int samplesPerSide = 8;

bool isInBadge(Point point) {
    constexpr double straight = fieldSize / 2 - badgeRadius;
    const double dx = std::max(std::abs(point.x - fieldSize / 2) - straight, 0.0);
    const double dy = std::max(std::abs(point.y - fieldSize / 2) - straight, 0.0);
    return dx * dx + dy * dy <= badgeRadius * badgeRadius;
}

bool isInPolygon(Point point, std::span<const Point> corners) {
    bool isInside = false;
    Point previous = corners.back();
    for (const Point corner : corners) {
        if ((corner.y > point.y) != (previous.y > point.y) &&
            point.x < (previous.x - corner.x) * (point.y - corner.y) / (previous.y - corner.y) + corner.x) {
            isInside = !isInside;
        }
        previous = corner;
    }
    return isInside;
}

bool isInGlyph(Point point) {
    return isInPolygon(point, pointerOutline) || std::any_of(motionBars.begin(), motionBars.end(), [&](const Bar& bar) {
               return point.x >= bar.topLeft.x && point.x < bar.bottomRight.x && point.y >= bar.topLeft.y &&
                      point.y < bar.bottomRight.y;
           });
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

std::uint32_t pixelAt(int column, int row, double unitsPerPixel) {
    int badgeSamples = 0;
    int glyphSamples = 0;
    for (int sample = 0; sample < samplesPerSide * samplesPerSide; ++sample) {
        const int sampleColumn = sample % samplesPerSide;
        const int sampleRow = sample / samplesPerSide;
        const Point point{(column + (sampleColumn + 0.5) / samplesPerSide) * unitsPerPixel,
                          (row + (sampleRow + 0.5) / samplesPerSide) * unitsPerPixel};
        if (isInBadge(point)) {
            ++badgeSamples;
            glyphSamples += isInGlyph(point) ? 1 : 0;
        }
    }
    if (badgeSamples == 0) {
        return 0;
    }
    const auto alpha =
        static_cast<std::uint32_t>(std::lround(255.0 * badgeSamples / (samplesPerSide * samplesPerSide)));
    return (alpha << 24U) | mixedColor(static_cast<double>(glyphSamples) / badgeSamples);
}

}  // namespace

std::vector<std::uint32_t> itemIconPixels(int size) {
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) {
            pixels.push_back(pixelAt(column, row, fieldSize / size));
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
