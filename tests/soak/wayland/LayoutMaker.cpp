#include "tests/soak/wayland/LayoutMaker.hpp"

#include <algorithm>

namespace vantrel::soak {

namespace {

constexpr int mostShown = 5;
/// Of the edge that two neighbours share, in points: where it is shorter, KWin 6 lets nobody through.
constexpr int leastSharedEdge = 40;

const std::vector<std::string> transforms{"normal",  "90",         "180",         "270",
                                          "flipped", "flipped-90", "flipped-180", "flipped-270"};

int downToFour(int coordinate) {
    constexpr int step = 4;
    return (coordinate - (coordinate % step + step) % step);
}

/// Where the next one begins beside the last, so that they share enough of an edge.
int besideEachOther(Random& random, int start, int length, int nextLength) {
    const int shared = std::min({leastSharedEdge, length, nextLength});
    return downToFour(random.between(start - nextLength + shared, start + length - shared));
}

ShownDisplay randomDisplay(Random& random, int number, const std::vector<DisplayShape>& shapes) {
    const DisplayShape& shape = random.oneOf(shapes);
    ShownDisplay display{.number = number,
                         .output = {.mode = shape.mode, .scale = shape.scale, .transform = random.oneOf(transforms)},
                         .width = shape.width,
                         .height = shape.height};
    if (display.output.transformNumber() % 2 == 1) {
        std::swap(display.width, display.height);
    }
    return display;
}

}  // namespace

std::vector<ShownDisplay> randomLayout(Random& random, std::vector<int> outputs,
                                       const std::vector<DisplayShape>& shapes) {
    random.shuffle(outputs);
    // One alone is a rarity, and no jump leads away from it.
    const int most = std::min(mostShown, static_cast<int>(outputs.size()));
    const int count = random.onceIn(10) ? 1 : random.between(std::min(2, most), most);
    const bool isRow = !random.onceIn(3);
    std::vector<ShownDisplay> displays;
    for (int index = 0; index < count; ++index) {
        ShownDisplay next = randomDisplay(random, outputs[static_cast<std::size_t>(index)], shapes);
        if (!displays.empty() && isRow) {
            const desk::MainRect last = displays.back().bounds();
            next.output.x = last.x + last.width;
            next.output.y = besideEachOther(random, last.y, last.height, next.height);
        } else if (!displays.empty()) {
            const desk::MainRect last = displays.back().bounds();
            next.output.x = besideEachOther(random, last.x, last.width, next.width);
            next.output.y = last.y + last.height;
        }
        displays.push_back(next);
    }
    const auto main = displays.begin() + random.between(0, count - 1);
    std::rotate(displays.begin(), main, main + 1);
    const desk::MainRect origin = displays.front().bounds();
    for (ShownDisplay& display : displays) {
        display.output.x -= origin.x;
        display.output.y -= origin.y;
    }
    return displays;
}

std::vector<desk::PlacedDisplay> placed(const std::vector<ShownDisplay>& displays) {
    std::vector<desk::PlacedDisplay> result;
    for (const ShownDisplay& display : displays) {
        result.push_back({.output = display.number, .bounds = display.bounds()});
    }
    return result;
}

}  // namespace vantrel::soak
