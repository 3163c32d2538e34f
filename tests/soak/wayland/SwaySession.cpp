#include "tests/soak/wayland/SwaySession.hpp"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tests/desk/wayland/support/TypingWindow.hpp"

namespace vantrel::soak {

namespace {

using desk::LayoutArea;

constexpr int outputsAtTheStart = 4;
/// For each output that was ever there the agent remembers a position for good, so there must be an end to them.
constexpr int mostPlugs = 30;
constexpr int mostOutputs = 7;
constexpr auto fixedConfiguration = "output * mode 480x360\nmode resize {\n bindsym Escape mode default\n}\n";

/// Where sway cannot switch a display off, it shows a part of the main one.
constexpr LayoutArea mirror{.x = 8, .y = 4, .width = 32, .height = 24};

ShownDisplay plainDisplay(int number) {
    constexpr int width = 480;
    return {.number = number, .output = {.mode = "480x360", .x = width * (number - 1)}, .width = width, .height = 360};
}

desk::SwayOptions startingOptions() {
    desk::SwayOptions options{.outputs = {}, .configuration = fixedConfiguration, .files = {}};
    for (int number = 1; number <= outputsAtTheStart; ++number) {
        options.outputs.push_back(plainDisplay(number).output);
    }
    return options;
}

}  // namespace

SwaySession::SwaySession() : desk_(startingOptions(), "us,de,ru") {
    std::vector<ShownDisplay> displays;
    std::vector<int> numbers;
    for (int number = 1; number <= outputsAtTheStart; ++number) {
        displays.push_back(plainDisplay(number));
        numbers.push_back(number);
    }
    expect(displays, numbers);
    canSwitchOff_ = findOutWhetherOutputsGo();
    show(displays);
}

bool SwaySession::findOutWhetherOutputsGo() {
    desk_.control().run("output HEADLESS-" + std::to_string(outputsAtTheStart) + " disable");
    for (const auto& output : nlohmann::json::parse(desk_.control().ask(desk::SwayControl::getOutputs))) {
        if (output.value("active", true) == false) {
            return true;
        }
    }
    return false;
}

std::vector<DisplayShape> SwaySession::shapes() const {
    return {{"480x360", "1", 480, 360}, {"600x450", "1.25", 480, 360}, {"450x300", "1.5", 300, 200},
            {"800x600", "2", 400, 300}, {"640x480", "1", 640, 480},    {"320x240", "1", 320, 240},
            {"64x64", "1", 64, 64},     {"40x300", "1", 40, 300},      {"300x200", "1.25", 240, 160}};
}

bool SwaySession::isShown(int output, const std::vector<ShownDisplay>& displays) const {
    return std::any_of(displays.begin(), displays.end(),
                       [output](const ShownDisplay& display) { return display.number == output; });
}

std::string SwaySession::commandsFor(const std::vector<ShownDisplay>& displays, const char* separator) const {
    std::string commands;
    for (const ShownDisplay& display : displays) {
        const desk::PrivateOutput& output = display.output;
        commands += "output HEADLESS-" + std::to_string(display.number) + " enable mode " + output.mode + " position " +
                    std::to_string(output.x) + " " + std::to_string(output.y) + " scale " + output.scale +
                    " transform " + output.transform + separator;
    }
    for (const int number : outputs()) {
        if (!isShown(number, displays)) {
            commands += "output HEADLESS-" + std::to_string(number);
            commands += canSwitchOff_ ? std::string(" disable")
                                      : " enable mode " + std::to_string(mirror.width) + "x" +
                                            std::to_string(mirror.height) + " position " + std::to_string(mirror.x) +
                                            " " + std::to_string(mirror.y) + " scale 1 transform normal";
            commands += separator;
        }
    }
    return commands;
}

void SwaySession::apply(const std::vector<ShownDisplay>& displays) {
    desk_.control().run(commandsFor(displays, "; "));
}

std::vector<LayoutArea> SwaySession::areas(const std::vector<ShownDisplay>& displays) const {
    std::vector<LayoutArea> areas;
    for (const ShownDisplay& display : displays) {
        areas.push_back(
            {.x = display.output.x, .y = display.output.y, .width = display.width, .height = display.height});
    }
    for (const int number : outputs()) {
        if (!canSwitchOff_ && !isShown(number, displays)) {
            areas.push_back(mirror);
        }
    }
    return areas;
}

bool SwaySession::plug() {
    std::vector<int> numbers = outputs();
    if (static_cast<int>(numbers.size()) < mostOutputs && plugs_ < mostPlugs) {
        desk_.control().run("create_output");
        numbers.push_back(outputsAtTheStart + ++plugs_);
        setOutputs(numbers);
        return true;
    }
    // Sway before 1.8 keeps what it has, and is shown to have more than one by those that can pull one out.
    if (canSwitchOff_ && static_cast<int>(numbers.size()) > outputsAtTheStart) {
        desk_.control().run("output HEADLESS-" + std::to_string(numbers.front()) + " unplug");
        numbers.erase(numbers.begin());
        setOutputs(numbers);
        return true;
    }
    return false;
}

void SwaySession::reconfigure() {
    std::ofstream(desk_.sway().configurationFile()) << "xwayland disable\n"
                                                    << fixedConfiguration << commandsFor(shown(), "\n");
    desk_.control().run("reload");
    awaitShown();
}

void SwaySession::checkNoHotKeysRemain() {
    for (const char* const mode : {"default", "resize"}) {
        for (const char* const chord : {"Ctrl+Mod1+Shift+Mod4+40", "Ctrl+Mod1+Shift+Mod4+39", "Ctrl+Mod1+Mod4+113",
                                        "Ctrl+Mod1+Mod4+114", "Ctrl+Mod1+Mod4+58"}) {
            const std::string answer = desk_.control().ask(desk::SwayControl::runCommand,
                                                           std::string("mode ") + mode + " unbindcode " + chord);
            // Unbinding what is not bound is an error.
            if (nlohmann::json::parse(answer).at(0).value("success", true)) {
                throw std::runtime_error(std::string("the agent has ended, and ") + chord + " is bound in the mode " +
                                         mode);
            }
        }
    }
    desk::TypingWindow window(desk_.compositor().socket());
    person().type(desk::hyper(desk::keys::d));
    // Hyper is four keys, and the fifth is the one that a binding would keep.
    constexpr std::size_t keysOfTheChord = 5;
    if (!desk::waitUntil([&] { return window.presses() == keysOfTheChord; })) {
        throw std::runtime_error("the agent has ended, and a window does not get Hyper + D");
    }
}

}  // namespace vantrel::soak
