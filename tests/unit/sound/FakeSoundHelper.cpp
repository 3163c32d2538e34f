// Stands in for the helper that plays sounds: writes the names that it is given into the file "played" of its working
// directory, line by line. While a file "stuck" is there it answers nothing, as if the sound server hung; with a file
// "once" it ends after the first sound.

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <fstream>
#include <string>
#include <thread>

namespace {

constexpr int agentSocket = 3;

bool exists(const char* name) {
    return access(name, F_OK) == 0;
}

}  // namespace

int main() {
    std::array<char, 256> name{};
    for (;;) {
        pollfd socket{agentSocket, POLLIN, 0};
        poll(&socket, 1, -1);
        const ssize_t length = recv(agentSocket, name.data(), name.size(), MSG_DONTWAIT);
        if (length <= 0) {
            std::ofstream("gone", std::ios::app) << getpid() << "\n";
            return 0;
        }
        std::ofstream("played", std::ios::app) << std::string(name.data(), static_cast<std::size_t>(length)) << "\n";
        while (exists("stuck")) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        send(agentSocket, "", 1, MSG_NOSIGNAL);
        std::ofstream("answered", std::ios::app) << "1\n";
        if (exists("once")) {
            return 0;
        }
    }
}
