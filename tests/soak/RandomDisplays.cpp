#include "tests/soak/RandomDisplays.hpp"

#include <algorithm>

namespace vantrel::soak {

namespace {

using desk::MainRect;
using desk::PlacedDisplay;

struct Size {
    int width;
    int height;
};

/// Few, because the server keeps every mode that it was ever told. The last ones have no point that is 24 points from
/// all edges.
const std::vector<Size> sizes{{1512, 982},  {1024, 768}, {1920, 1080}, {1280, 720}, {800, 600},
                              {1080, 1920}, {640, 480},  {64, 64},     {40, 900},   {904, 40}};

constexpr int widestDesk = 7000;  // of the server's 8192
constexpr int mostDisplays = 7;
constexpr int leastDesk = 320;  // below that the server refuses

std::vector<int> someOutputs(Random& random) {
    std::vector<int> outputs;
    for (int output = 0; output < desk::DisplayLayout::outputCount; ++output) {
        outputs.push_back(output);
    }
    random.shuffle(outputs);
    return outputs;
}

bool holdAnother(const std::vector<PlacedDisplay>& displays) {
    return std::any_of(displays.begin(), displays.end(), [&](const PlacedDisplay& one) {
        return std::any_of(displays.begin(), displays.end(), [&](const PlacedDisplay& other) {
            return &one != &other && isInside(one.bounds, other.bounds);
        });
    });
}

bool isTooSmall(const std::vector<PlacedDisplay>& displays) {
    return std::none_of(displays.begin(), displays.end(), [](const PlacedDisplay& display) {
        return display.bounds.width >= leastDesk && display.bounds.height >= leastDesk;
    });
}

std::vector<PlacedDisplay> randomRow(Random& random, const std::vector<int>& outputs) {
    std::vector<PlacedDisplay> displays;
    const int count = random.between(1, mostDisplays - 1);
    int x = 0;
    for (int index = 0; index < count && x < widestDesk - sizes[2].width; ++index) {
        const Size size = random.oneOf(sizes);
        displays.push_back(
            {.output = outputs[static_cast<std::size_t>(index)],
             .bounds = {.x = x, .y = random.between(-400, 400), .width = size.width, .height = size.height}});
        x += size.width;
        if (random.onceIn(4)) {
            x += random.between(-60, 60);
        }
    }
    return displays;
}

/// Adds one that shows a part of the first.
void addMirror(std::vector<PlacedDisplay>& displays, int output) {
    const MainRect& shown = displays.front().bounds;
    for (const Size size : sizes) {
        if (size.width < shown.width && size.height < shown.height) {
            displays.push_back(
                {.output = output, .bounds = {.x = shown.x, .y = shown.y, .width = size.width, .height = size.height}});
            return;
        }
    }
}

}  // namespace

bool isInside(const MainRect& inner, const MainRect& outer) {
    return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.width <= outer.x + outer.width &&
           inner.y + inner.height <= outer.y + outer.height;
}

bool holds(const MainRect& display, desk::LayoutPoint point) {
    return point.x >= display.x && point.x < display.x + display.width && point.y >= display.y &&
           point.y < display.y + display.height;
}

std::vector<PlacedDisplay> randomDisplays(Random& random) {
    const std::vector<int> outputs = someOutputs(random);
    std::vector<PlacedDisplay> displays = randomRow(random, outputs);
    while (holdAnother(displays) || isTooSmall(displays)) {
        displays = randomRow(random, outputs);
    }
    const auto main = displays.begin() + random.between(0, static_cast<int>(displays.size()) - 1);
    std::rotate(displays.begin(), main, main + 1);
    const MainRect origin = displays.front().bounds;
    for (PlacedDisplay& display : displays) {
        display.bounds.x -= origin.x;
        display.bounds.y -= origin.y;
    }
    if (random.onceIn(5)) {
        addMirror(displays, outputs.back());
    }
    return displays;
}

}  // namespace vantrel::soak
