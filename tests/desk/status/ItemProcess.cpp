#include "tests/desk/status/ItemProcess.hpp"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace vantrel::desk {

ItemProcess::ItemProcess(const Environment& environment) {
    int sockets[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0) {
        throw std::runtime_error("no socket for the item's process");
    }
    socket_ = sockets[0];
    ChildProcessOptions options;
    options.arguments = {VANTREL_STATUS_ITEM_PROBE, std::to_string(sockets[1])};
    options.environment = environment;
    options.keptDescriptor = sockets[1];
    process_ = std::make_unique<ChildProcess>(options);
    close(sockets[1]);
    if (!waitForLine("ready")) {
        throw std::runtime_error("the item's process does not become ready");
    }
}

ItemProcess::~ItemProcess() {
    close(socket_);
}

void ItemProcess::say(const std::string& line) {
    const std::string text = line + "\n";
    if (send(socket_, text.data(), text.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(text.size())) {
        throw std::runtime_error("the item's process does not listen");
    }
}

void ItemProcess::receive() {
    char buffer[4096];
    for (ssize_t length = 0; (length = recv(socket_, buffer, sizeof buffer, MSG_DONTWAIT)) > 0;) {
        received_.append(buffer, static_cast<std::size_t>(length));
    }
    for (auto end = received_.find('\n'); end != std::string::npos; end = received_.find('\n')) {
        lines_.push_back(received_.substr(0, end));
        received_.erase(0, end + 1);
    }
}

bool ItemProcess::waitForLine(const std::string& line, Duration deadline) {
    return waitUntil(
        [&] {
            receive();
            const auto found = std::find(lines_.begin(), lines_.end(), line);
            if (found == lines_.end()) {
                return false;
            }
            lines_.erase(lines_.begin(), found + 1);
            return true;
        },
        deadline);
}

std::string ItemProcess::nextLine(Duration deadline) {
    const bool hasLine = waitUntil(
        [&] {
            receive();
            return !lines_.empty();
        },
        deadline);
    if (!hasLine) {
        return {};
    }
    const std::string line = lines_.front();
    lines_.erase(lines_.begin());
    return line;
}

bool ItemProcess::isVisible() {
    say("visible");
    const std::string answer = nextLine(generousDeadline);
    if (answer != "visible yes" && answer != "visible no") {
        throw std::runtime_error("the item's process answers: " + answer);
    }
    return answer == "visible yes";
}

bool ItemProcess::waitForVisible(bool isVisible) {
    return waitUntil([&] { return this->isVisible() == isVisible; });
}

long privateMemory(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string word; file >> word;) {
        if (word == "Private_Dirty:") {
            long size = 0;
            file >> size;
            return size;
        }
    }
    throw std::runtime_error("the process's memory cannot be read");
}

}  // namespace vantrel::desk
