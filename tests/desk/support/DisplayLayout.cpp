#include "tests/desk/support/DisplayLayout.hpp"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "tests/desk/support/ChildProcess.hpp"

namespace vantrel::desk {

namespace {

std::string outputName(int output) {
    return "DUMMY" + std::to_string(output);
}

/// Notes the text; true when it was not there before.
bool addNew(std::vector<std::string>& texts, const std::string& text) {
    if (std::find(texts.begin(), texts.end(), text) != texts.end()) {
        return false;
    }
    texts.push_back(text);
    return true;
}

}  // namespace

DisplayLayout::DisplayLayout(const std::string& displayName) : environment_(Environment::minimal()) {
    environment_.set("DISPLAY", displayName);
}

std::vector<PlacedDisplay> DisplayLayout::twoDisplays() {
    return {{.output = 0, .bounds = {.x = 0, .y = 0, .width = 1512, .height = 982}},
            {.output = 1, .bounds = {.x = -1024, .y = 100, .width = 1024, .height = 768}}};
}

std::string DisplayLayout::provideMode(int output, const MainRect& bounds) {
    const auto width = std::to_string(bounds.width);
    const auto height = std::to_string(bounds.height);
    auto name = "vantrel-" + width + "x" + height;
    if (addNew(modes_, name)) {
        // No blanking, and a slow clock (MHz) that stays below the driver's limit for the largest displays.
        runProgram({"xrandr", "--newmode", name, "50", width, width, width, width, height, height, height, height},
                   environment_);
    }
    if (addNew(outputModes_, outputName(output) + " " + name)) {
        runProgram({"xrandr", "--addmode", outputName(output), name}, environment_);
    }
    return name;
}

void DisplayLayout::apply(const std::vector<PlacedDisplay>& displays) {
    if (displays.empty() || displays.front().bounds.x != 0 || displays.front().bounds.y != 0) {
        throw std::invalid_argument("the first display is the main one and stands at (0, 0)");
    }
    RootPoint origin;
    for (const auto& display : displays) {
        origin.x = std::max(origin.x, -display.bounds.x);
        origin.y = std::max(origin.y, -display.bounds.y);
    }
    std::array<bool, outputCount> isOn{};
    // Left to itself, xrandr takes the resolution from the rounded size in millimetres of the layout before, which
    // drifts over thousands of layouts until a size comes out as nothing and the server refuses it.
    std::vector<std::string> arguments = {"xrandr", "--dpi", "96"};
    for (const auto& display : displays) {
        isOn.at(static_cast<std::size_t>(display.output)) = true;
        const auto mode = provideMode(display.output, display.bounds);
        arguments.insert(arguments.end(), {"--output", outputName(display.output), "--mode", mode, "--pos",
                                           std::to_string(display.bounds.x + origin.x) + "x" +
                                               std::to_string(display.bounds.y + origin.y)});
    }
    arguments.insert(arguments.end(), {"--output", outputName(displays.front().output), "--primary"});
    for (int output = 0; output < outputCount; ++output) {
        if (!isOn.at(static_cast<std::size_t>(output))) {
            arguments.insert(arguments.end(), {"--output", outputName(output), "--off"});
        }
    }
    runProgram(arguments, environment_);
    mainOrigin_ = origin;
}

}  // namespace vantrel::desk
