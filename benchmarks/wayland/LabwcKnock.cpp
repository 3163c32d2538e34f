// What labwc's binding starts for the floor: it knocks at the floor's socket and ends. It needs the C library alone.
#include <sys/socket.h>
#include <sys/un.h>

#include <cstdio>
#include <cstdlib>

int main() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "%s/floor", std::getenv("XDG_RUNTIME_DIR"));
    const int door = socket(AF_UNIX, SOCK_DGRAM, 0);
    return sendto(door, "", 1, 0, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 1 ? 0 : 1;
}
