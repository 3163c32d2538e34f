#include "Vantrel/Backends/Sway/SwayCompositor.hpp"

#include <cmath>
#include <cstdlib>
#include <utility>
#include <vector>

namespace vantrel::sway {

namespace {

std::vector<std::filesystem::path> placesFor(const Peer& peer) {
    std::vector<std::filesystem::path> places;
    if (const char* const named = std::getenv("SWAYSOCK")) {
        places.emplace_back(named);
    }
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    places.push_back(std::filesystem::path(runtime == nullptr ? "/tmp" : runtime) /
                     ("sway-ipc." + std::to_string(peer.user) + "." + std::to_string(peer.processId) + ".sock"));
    return places;
}

/// Whole thousandths, without a locale.
std::string decimal(double number) {
    const auto thousandths = static_cast<long long>(std::llround(number * 1000));
    const long long magnitude = std::llabs(thousandths);
    std::string text = thousandths < 0 ? "-" : "";
    text += std::to_string(magnitude / 1000);
    text += '.';
    text += std::to_string(1000 + magnitude % 1000).substr(1);
    return text;
}

}  // namespace

std::unique_ptr<wayland::Compositor> SwayCompositor::find(const wayland::CompositorAddress& address) {
    for (const std::filesystem::path& place : placesFor(address.peer)) {
        SwayIpc ipc(place);
        if (ipc.open() && ipc.peer() == address.peer) {
            return std::unique_ptr<SwayCompositor>(new SwayCompositor(std::move(ipc), place, address));
        }
    }
    return nullptr;
}

SwayCompositor::SwayCompositor(SwayIpc commands, const std::filesystem::path& socketFile,
                               const wayland::CompositorAddress& address)
    : commands_(std::move(commands)), seat_(address.seat), hotKeys_(commands_, socketFile, address.readKeymap) {}

bool SwayCompositor::warpPointer(const wayland::Warp& warp) {
    // Sway counts from that corner.
    return commands_.tell(MessageType::runCommand, "seat " + seat_ + " cursor set " +
                                                       decimal(warp.to.x - warp.corner.x) + " " +
                                                       decimal(warp.to.y - warp.corner.y));
}

bool SwayCompositor::lookUnderPointer() {
    return commands_.tell(MessageType::runCommand, "seat " + seat_ + " cursor move 0 0");
}

}  // namespace vantrel::sway
