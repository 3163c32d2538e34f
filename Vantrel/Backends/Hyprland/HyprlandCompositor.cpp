#include "Vantrel/Backends/Hyprland/HyprlandCompositor.hpp"

#include <sys/socket.h>

#include <cstdlib>
#include <vector>

#include "Vantrel/Handles/DirectoryEntries.hpp"

namespace vantrel::hyprland {

namespace {

constexpr auto commandSocket = ".socket.sock";
constexpr auto eventSocket = ".socket2.sock";

/// The directories with the sockets of one instance each.
std::vector<std::filesystem::path> instances() {
    std::vector<std::filesystem::path> found;
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::filesystem::path all = std::filesystem::path(runtime == nullptr ? "/tmp" : runtime) / "hypr";
    if (const char* const named = std::getenv("HYPRLAND_INSTANCE_SIGNATURE")) {
        found.push_back(all / named);
    }
    const auto others = entriesOf(all);
    found.insert(found.end(), others.begin(), others.end());
    return found;
}

/// One that is too busy to answer is taken for a newer one.
Language askLanguage(const HyprlandSocket& commands) {
    const auto answer = commands.ask(languageQuestion, Clock::now() + backend::answerTimeAtStart);
    return !answer || *answer == agreement ? Language::lua : Language::keywords;
}

}  // namespace

std::unique_ptr<wayland::Compositor> HyprlandCompositor::find(const wayland::CompositorAddress& address) {
    for (const std::filesystem::path& instance : instances()) {
        if (peerOf(connectToSocket(instance / commandSocket, SOCK_NONBLOCK).get()) == address.peer) {
            return std::unique_ptr<HyprlandCompositor>(new HyprlandCompositor(instance, address));
        }
    }
    return nullptr;
}

HyprlandCompositor::HyprlandCompositor(const std::filesystem::path& instance, const wayland::CompositorAddress& address)
    : instance_(instance), address_(address), commands_(instance / commandSocket), language_(askLanguage(commands_)) {}

backend::HotKeyBinder* HyprlandCompositor::hotKeys() {
    hotKeys_.emplace(commands_, language_, instance_ / eventSocket, address_.readKeymap);
    return &*hotKeys_;
}

std::optional<wayland::LayoutPoint> HyprlandCompositor::readPointer(Clock::time_point deadline) {
    const auto answer = commands_.ask(positionQuestion, deadline);
    return answer ? positionIn(*answer) : std::nullopt;
}

bool HyprlandCompositor::warpPointer(const wayland::Warp& warp) {
    return commands_.tell(moveCommand(language_, warp.to));
}

}  // namespace vantrel::hyprland
