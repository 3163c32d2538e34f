#include "helpers/messages/PixelGrid.hpp"

#include <cmath>
#include <numeric>

namespace vantrel::overlay {

Rect onPixelEdges(const Rect& rect, double scale) {
    constexpr int steps = 120;
    const int grid = steps / std::gcd(static_cast<int>(std::lround(scale * steps)), steps);
    const auto before = [grid](int edge) {
        return static_cast<int>(std::floor(static_cast<double>(edge) / grid)) * grid;
    };
    const auto after = [grid](int edge) {
        return static_cast<int>(std::ceil(static_cast<double>(edge) / grid)) * grid;
    };
    const int x = before(rect.x);
    const int y = before(rect.y);
    return {.x = x, .y = y, .width = after(rect.x + rect.width) - x, .height = after(rect.y + rect.height) - y};
}

}  // namespace vantrel::overlay
