// The floor on sway: a program of a few lines that binds one key over sway's socket, and at each press reads the
// pointer and has sway put it where it last was on the other side of a line (x = 0). It stores nothing and knows no
// errors. Arguments: what sway counts from (the layout's corner), and the first point on the line's left.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "benchmarks/wayland/FloorPointer.hpp"

namespace {

int connectToSway() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, std::getenv("SWAYSOCK"), sizeof address.sun_path - 1);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    return connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ? connection : -1;
}

bool say(int connection, std::uint32_t type, const std::string& text) {
    const auto length = static_cast<std::uint32_t>(text.size());
    std::string message = "i3-ipc";
    message.append(reinterpret_cast<const char*>(&length), 4).append(reinterpret_cast<const char*>(&type), 4) += text;
    return send(connection, message.data(), message.size(), 0) > 0;
}

std::string hear(int connection) {
    std::array<char, 4096> buffer{};
    const ssize_t count = recv(connection, buffer.data(), buffer.size(), 0);
    return {buffer.data(), static_cast<std::size_t>(count < 0 ? 0 : count)};
}

}  // namespace

int main(int count, char** arguments) {
    const int commands = connectToSway();
    const int events = connectToSway();
    if (count != 5 || commands < 0 || events < 0) {
        return 1;
    }
    vantrel::bench::FloorPointer pointer;
    say(events, 2, R"(["binding"])");
    hear(events);
    say(commands, 0, "bindcode --no-repeat --no-warn Ctrl+Mod1+Shift+Mod4+40 nop floor");
    hear(commands);
    const double cornerX = std::atof(arguments[1]);
    const double cornerY = std::atof(arguments[2]);
    std::array<std::array<double, 2>, 2> remembered{{{std::atof(arguments[3]), std::atof(arguments[4])}, {}}};
    const auto stir = [&] {
        say(commands, 0, "seat seat0 cursor move 0 0");
        hear(commands);
    };
    while (hear(events).find("nop floor") != std::string::npos) {
        const auto place = pointer.read(stir);
        const std::size_t side = place.x < 0 ? 0 : 1;
        remembered[side] = {place.x, place.y};
        const auto& target = remembered[1 - side];
        say(commands, 0,
            "seat seat0 cursor set " + std::to_string(target[0] - cornerX) + " " + std::to_string(target[1] - cornerY));
        hear(commands);
        // What lies beneath is to be told, too.
        wl_display_roundtrip(pointer.display());
        stir();
    }
    return 0;
}
