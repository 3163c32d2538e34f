#include "Vantrel/Backends/Wayland/SessionSocket.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <thread>
#include <utility>

#include "Vantrel/Handles/LocalSocket.hpp"
#include "Vantrel/Handles/TextPieces.hpp"

namespace vantrel::wayland {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds receiptDeadline{5};
constexpr std::size_t mostBytes = std::size_t{16} * 1024 * 1024;  // far beyond what a command line holds
constexpr std::size_t mostGuests = 64;
constexpr char receipt = '\n';

std::filesystem::path placeFor(const std::filesystem::path& runtimeDirectory, const std::filesystem::path& display) {
    if (runtimeDirectory.empty()) {
        return display.parent_path() / ("vantrel-" + display.filename().native());
    }
    // A display of this directory has one name, however it is written.
    const bool isHere = display.is_relative() || display.parent_path() == runtimeDirectory;
    std::string name = isHere ? display.filename().native() : display.native();
    std::replace(name.begin(), name.end(), '/', '_');
    return runtimeDirectory / ("vantrel-" + name);
}

FileDescriptor connectTo(const std::filesystem::path& file) {
    FileDescriptor socket = connectToSocket(file);
    const timeval patience{.tv_sec = receiptDeadline.count(), .tv_usec = 0};
    setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    return socket;
}

bool sendAll(int socket, std::string_view text) {
    while (!text.empty()) {
        const ssize_t sent = send(socket, text.data(), text.size(), MSG_NOSIGNAL);
        if (sent < 0) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

/// Whether the process at the other end is this user's.
bool isOurs(int socket) {
    const auto peer = peerOf(socket);
    return peer && (peer->user == geteuid() || peer->user == 0);
}

/// Whether nothing is missing at the end.
bool isWholeList(std::string_view text) {
    return text == std::string_view("\0", 1) || text.ends_with(std::string_view("\0\0", 2));
}

}  // namespace

/// Another start of the program, while it hands over.
struct SessionSocket::Guest {
    Guest(FileDescriptor accepted, std::function<void()> readable)
        : socket(std::move(accepted)),
          source(LoopSource::whenReadable(socket.get(), std::move(readable), {.priority = G_PRIORITY_HIGH})) {}

    FileDescriptor socket;
    std::string text;
    LoopSource source;
};

SessionSocket::SessionSocket(const std::filesystem::path& runtimeDirectory, const std::filesystem::path& display) {
    const std::filesystem::path place = placeFor(runtimeDirectory, display);
    lockFile_ = place.native() + ".lock";
    socketFile_ = place.native() + ".sock";
}

SessionSocket SessionSocket::ofThisSession() {
    const char* const directory = std::getenv("XDG_RUNTIME_DIR");
    const char* const display = std::getenv("WAYLAND_DISPLAY");
    const bool isNamed = display != nullptr && *display != '\0';
    return {directory == nullptr ? "" : directory, isNamed ? display : "wayland-0"};
}

SessionSocket::~SessionSocket() {
    if (listener_.isOpen()) {
        unlink(socketFile_.c_str());
    }
}

bool SessionSocket::claim() {
    FileDescriptor lock(open(lockFile_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!lock.isOpen() || flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
        return false;
    }
    const auto address = socketAddress(socketFile_);
    FileDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!address || !listener.isOpen()) {
        return false;
    }
    // Who held the lock before may have had no time to take it away.
    unlink(socketFile_.c_str());
    fchmod(listener.get(), 0600);
    if (bind(listener.get(), reinterpret_cast<const sockaddr*>(&*address), sizeof *address) != 0 ||
        listen(listener.get(), SOMAXCONN) != 0) {
        return false;
    }
    lock_ = std::move(lock);
    listener_ = std::move(listener);
    return true;
}

bool SessionSocket::send(const std::vector<std::string>& urls) const {
    // The agent may hold the lock already and not listen yet.
    constexpr std::chrono::milliseconds pause{5};
    const Clock::time_point deadline = Clock::now() + receiptDeadline;
    FileDescriptor socket = connectTo(socketFile_);
    while (!socket.isOpen() && Clock::now() < deadline) {
        const FileDescriptor lock(open(lockFile_.c_str(), O_RDWR | O_CLOEXEC));
        if (!lock.isOpen() || flock(lock.get(), LOCK_EX | LOCK_NB) == 0) {
            return false;  // nobody is the agent
        }
        std::this_thread::sleep_for(pause);
        socket = connectTo(socketFile_);
    }
    if (!socket.isOpen()) {
        return false;
    }
    std::string text;
    for (const std::string& url : urls) {
        text += url;
        text += '\0';
    }
    text += '\0';
    char answer = 0;
    return sendAll(socket.get(), text) && shutdown(socket.get(), SHUT_WR) == 0 &&
           recv(socket.get(), &answer, 1, 0) == 1 && answer == receipt;
}

void SessionSocket::serve(Opened opened) {
    opened_ = std::move(opened);
    if (listener_.isOpen()) {
        listenerSource_ =
            LoopSource::whenReadable(listener_.get(), [this] { accept(); }, {.priority = G_PRIORITY_HIGH});
    }
}

void SessionSocket::accept() {
    FileDescriptor socket(accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!socket.isOpen() || !isOurs(socket.get()) || guests_.size() >= mostGuests) {
        return;
    }
    const int number = socket.get();
    guests_[number] = std::make_unique<Guest>(std::move(socket), [this, number] { receive(number); });
}

void SessionSocket::receive(int guest) {
    const auto found = guests_.find(guest);
    std::array<char, std::size_t{64} * 1024> buffer;
    const ssize_t count = recv(guest, buffer.data(), buffer.size(), 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    std::string& text = found->second->text;
    if (count > 0 && text.size() + static_cast<std::size_t>(count) <= mostBytes) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
        return;
    }
    const auto finished = std::move(guests_.extract(found).mapped());
    // What broke off or does not fit gets no receipt.
    const bool isWhole = count == 0 && isWholeList(text);
    if (isWhole && ::send(guest, &receipt, 1, MSG_NOSIGNAL) == 1 && opened_) {
        text.pop_back();
        opened_(piecesOf(text, '\0'));
    }
}

}  // namespace vantrel::wayland
