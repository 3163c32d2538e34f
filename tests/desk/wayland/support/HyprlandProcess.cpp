#include "tests/desk/wayland/support/HyprlandProcess.hpp"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "Vantrel/Backends/Hyprland/HyprlandSocket.hpp"

namespace vantrel::desk {

namespace {

std::string monitorCall(const std::string& name, const PrivateOutput& output) {
    return "hl.monitor({ output = \"" + name + "\", mode = \"" + output.mode + "@60\", position = \"" +
           std::to_string(output.x) + "x" + std::to_string(output.y) + "\", scale = " + output.scale +
           ", transform = " + std::to_string(output.transformNumber()) + ", disabled = false })";
}

/// The file of the program without what would have the dynamic linker pass over LD_PRELOAD.
std::filesystem::path copyWithoutCapabilities(const std::filesystem::path& directory) {
    std::filesystem::copy_file(VANTREL_HYPRLAND, directory / "Hyprland");
    return directory / "Hyprland";
}

}  // namespace

// Hyprland goes without sockets where their path, with a signature of some sixty letters, would be too long.
HyprlandProcess::HyprlandProcess(const HyprlandOptions& options) : CompositorProcess("h") {
    std::size_t number = 0;
    for (const PrivateOutput& output : options.outputs) {
        monitors_ += monitorCall(outputName(++number), output) + "\n";
    }
    writeConfiguration(options.configuration);
    start({copyWithoutCapabilities(runtimeDirectory()), "--config", runtimeDirectory() / "hyprland.lua"}, 0,
          {{"LD_PRELOAD", VANTREL_CARD_STAND_IN},
           {"LIBSEAT_BACKEND", "noop"},
           {"LIBGL_ALWAYS_SOFTWARE", "1"},
           {"HYPRLAND_NO_RT", "1"}});
    for (const auto& entry : std::filesystem::directory_iterator(runtimeDirectory() / "hypr")) {
        signature_ = entry.path().filename();
    }
    for (std::size_t created = 1; created <= options.outputs.size(); ++created) {
        waitUntil([&] { return ask("/output create headless " + outputName(created)) == "ok"; });
    }
    waitUntilArranged(options.outputs);
    // Of what is missing to it here.
    static_cast<void>(ask("dismissnotify"));
}

void HyprlandProcess::writeConfiguration(const std::string& configuration) const {
    std::ofstream(runtimeDirectory() / "hyprland.lua")
        << "hl.config({ misc = { disable_hyprland_logo = true, disable_splash_rendering = true },"
           " animations = { enabled = false }, xwayland = { enabled = false },"
           " ecosystem = { no_update_news = true, no_donation_nag = true } })\n"
        << monitors_ << configuration;
}

void HyprlandProcess::configure(const std::string& configuration) const {
    writeConfiguration(configuration);
    reload();
}

void HyprlandProcess::arrange(const std::vector<PrivateOutput>& outputs) const {
    std::size_t number = 0;
    for (const PrivateOutput& output : outputs) {
        evaluate(monitorCall(outputName(++number), output));
    }
    waitUntilArranged(outputs);
}

bool HyprlandProcess::switchOff(int number) const {
    const std::string name = outputName(static_cast<std::size_t>(number));
    evaluate("hl.monitor({ output = \"" + name + "\", disabled = true })");
    return waitUntil([&] { return ask("j/monitors").find('"' + name + '"') == std::string::npos; });
}

void HyprlandProcess::waitUntilArranged(const std::vector<PrivateOutput>& outputs) const {
    const auto isArranged = [&] {
        const auto monitors = nlohmann::json::parse(ask("j/monitors"), nullptr, false);
        std::size_t number = 0;
        return std::all_of(outputs.begin(), outputs.end(), [&](const PrivateOutput& output) {
            const std::string name = outputName(++number);
            return std::any_of(monitors.begin(), monitors.end(), [&](const auto& monitor) {
                const std::string mode =
                    std::to_string(monitor.value("width", 0)) + "x" + std::to_string(monitor.value("height", 0));
                return monitor.value("name", "") == name && monitor.value("x", 0) == output.x &&
                       monitor.value("y", 0) == output.y && mode == output.mode &&
                       monitor.value("transform", 0U) == output.transformNumber() &&
                       std::abs(monitor.value("scale", 0.0) - std::stod(output.scale)) < 0.01;
            });
        });
    };
    if (!waitUntil(isArranged)) {
        throw std::runtime_error("Hyprland's displays are not as asked: " + ask("j/monitors"));
    }
}

std::string HyprlandProcess::ask(std::string_view request) const {
    const hyprland::HyprlandSocket socket(instance() / ".socket.sock");
    return socket.ask(request, std::chrono::steady_clock::now() + generousDeadline).value_or("");
}

void HyprlandProcess::evaluate(const std::string& lua) const {
    if (const std::string answer = ask("/eval " + lua); answer != "ok") {
        throw std::runtime_error("Hyprland refuses " + lua + ": " + answer);
    }
}

}  // namespace vantrel::desk
