#include "Vantrel/Backends/Wayfire/WayfireCompositor.hpp"

#include <cmath>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Vantrel/Backends/Wayfire/WayfireMessages.hpp"
#include "Vantrel/Handles/DirectoryEntries.hpp"
#include "Vantrel/Handles/FileContents.hpp"
#include "Vantrel/Handles/TextPieces.hpp"

namespace vantrel::wayfire {

namespace {

std::filesystem::path environment(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? "" : value;
}

/// To the fractions that Wayland has. Wayfire tells finer ones, and warps aim a little further than these: each jump
/// would take the pointer further still.
double cut(double coordinate) {
    constexpr double fractions = 256;
    return std::floor(coordinate * fractions) / fractions;
}

std::vector<std::filesystem::path> sockets() {
    std::vector<std::filesystem::path> found{environment("WAYFIRE_SOCKET")};
    for (const std::filesystem::path& entry : entriesOf(environment("XDG_RUNTIME_DIR"))) {
        if (entry.filename().native().starts_with("wayfire-")) {
            found.push_back(entry);
        }
    }
    return found;
}

/// The file that wayfire was told to read, or reads of itself.
std::filesystem::path configurationOf(pid_t wayfire) {
    const std::filesystem::path process = "/proc/" + std::to_string(wayfire);
    const std::string commandLine = contentsOf(process / "cmdline").value_or("");
    std::string_view arguments = commandLine;
    while (const auto argument = takePiece(arguments, '\0')) {
        constexpr std::string_view joined = "--config=";
        if (argument->starts_with(joined)) {
            return process / "cwd" / argument->substr(joined.size());
        }
        if (*argument == "-c" || *argument == "--config") {
            return process / "cwd" / takePiece(arguments, '\0').value_or("");
        }
    }
    if (auto named = environment("WAYFIRE_CONFIG_FILE"); !named.empty()) {
        return named;
    }
    const auto home = environment("XDG_CONFIG_HOME");
    return (home.empty() ? environment("HOME") / ".config" : home) / "wayfire.ini";
}

}  // namespace

std::unique_ptr<wayland::Compositor> WayfireCompositor::find(const wayland::CompositorAddress& address) {
    for (const std::filesystem::path& file : sockets()) {
        auto socket = std::make_unique<WayfireSocket>(file);
        if (socket->isOpen() && socket->peer() == address.peer) {
            return std::unique_ptr<WayfireCompositor>(new WayfireCompositor(std::move(socket), address));
        }
    }
    return nullptr;
}

WayfireCompositor::WayfireCompositor(std::unique_ptr<WayfireSocket> socket, const wayland::CompositorAddress& address)
    : socket_(std::move(socket)), address_(address) {}

backend::HotKeyBinder* WayfireCompositor::hotKeys() {
    const auto methods = socket_->call(methodsCall(), Clock::now() + backend::answerTimeAtStart);
    if (!methods || !canBind(*methods)) {
        return nullptr;
    }
    hotKeys_.emplace(*socket_, configurationOf(address_.peer.processId), address_.readKeymap);
    return &*hotKeys_;
}

std::optional<wayland::LayoutPoint> WayfireCompositor::readPointer(Clock::time_point deadline) {
    const auto answer = socket_->call(positionCall(), deadline);
    const auto place = answer ? positionIn(*answer) : std::nullopt;
    if (!place) {
        return std::nullopt;
    }
    return wayland::LayoutPoint{.x = cut(place->x), .y = cut(place->y)};
}

}  // namespace vantrel::wayfire
