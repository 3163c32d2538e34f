#include "Vantrel/Platform/Desktop/StatusItem/OverlayProcess.hpp"

#include <glib-unix.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "Vantrel/Platform/Desktop/StatusItem/GLibHandles.hpp"

namespace vantrel::desktop {

namespace {

constexpr int childSocket = 3;
constexpr guint lingeringTime = 5;  // seconds

std::string overlayProgram() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return (self.parent_path() / VANTREL_LIBEXEC_FROM_BIN / "vantrel-overlay").lexically_normal().string();
}

/// Starts the program with the socket and returns whether it could be started. The main loop reaps it.
bool spawn(const std::string& program, int socket) {
    std::string path = program;
    char* arguments[] = {path.data(), nullptr};
    const gint sources[] = {socket};
    const gint targets[] = {childSocket};
    GPid process = 0;
    GError* rawError = nullptr;
    const gboolean isStarted =
        g_spawn_async_with_pipes_and_fds(nullptr, arguments, nullptr, G_SPAWN_DO_NOT_REAP_CHILD, nullptr, nullptr, -1,
                                         -1, -1, sources, targets, 1, &process, nullptr, nullptr, nullptr, &rawError);
    const GErrorPointer error(rawError);
    if (isStarted) {
        g_child_watch_add(
            process, [](GPid ended, gint, gpointer) { g_spawn_close_pid(ended); }, nullptr);
    }
    return isStarted != FALSE;
}

std::vector<std::string> textFields(const std::string& text, const ItemFont& font) {
    return {text, std::to_string(static_cast<int>(font.size)),
            font.weight == FontWeight::semibold ? "semibold" : "regular"};
}

}  // namespace

OverlayProcess::OverlayProcess(Events events) : events_(std::move(events)) {}

OverlayProcess::~OverlayProcess() {
    hangUp();
}

void OverlayProcess::showText(const std::string& text, const ItemFont& font) {
    if (start()) {
        isTextShown_ = true;
        send({.kind = OverlayMessage::Kind::showText, .fields = textFields(text, font)});
        lingerOrStay();
    }
}

void OverlayProcess::hideText() {
    if (std::exchange(isTextShown_, false)) {
        send({.kind = OverlayMessage::Kind::hideText, .fields = {}});
        lingerOrStay();
    }
}

void OverlayProcess::openMenu(const std::vector<OverlayRow>& rows) {
    if (!rows.empty() && start()) {
        isMenuOpen_ = true;
        send({.kind = OverlayMessage::Kind::openMenu, .fields = rowFields(rows)});
        lingerOrStay();
    }
}

void OverlayProcess::updateMenu(const std::vector<OverlayRow>& rows) {
    if (isMenuOpen_) {
        send({.kind = OverlayMessage::Kind::updateMenu, .fields = rowFields(rows)});
    }
}

void OverlayProcess::paintWindow(std::uint32_t window, const std::string& text, const ItemFont& font) {
    if (start()) {
        std::vector<std::string> fields = textFields(text, font);
        fields.insert(fields.begin(), std::to_string(window));
        send({.kind = OverlayMessage::Kind::paintWindow, .fields = std::move(fields)});
        lingerOrStay();
    }
}

bool OverlayProcess::start() {
    if (socket_ >= 0) {
        return true;
    }
    int sockets[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets) != 0) {
        return false;
    }
    const bool isStarted = spawn(overlayProgram(), sockets[1]);
    close(sockets[1]);
    if (!isStarted) {
        close(sockets[0]);
        return false;
    }
    socket_ = sockets[0];
    socketSource_ = g_unix_fd_add(socket_, G_IO_IN, readable, this);
    return true;
}

void OverlayProcess::hangUp() {
    if (lingerSource_ != 0) {
        g_source_remove(std::exchange(lingerSource_, 0));
    }
    if (socket_ >= 0) {
        g_source_remove(std::exchange(socketSource_, 0));
        close(std::exchange(socket_, -1));
    }
    isTextShown_ = false;
    isMenuOpen_ = false;
}

void OverlayProcess::send(const OverlayMessage& message) {
    const std::string packet = encodedPacket(message);
    if (socket_ < 0 || packet.size() > longestOverlayPacket) {
        return;
    }
    // A program that has ended or does not read is given up; the next thing to show starts another.
    if (::send(socket_, packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT) < 0) {
        hangUp();
    }
}

gboolean OverlayProcess::readable(gint /*socket*/, GIOCondition /*condition*/, gpointer data) {
    static_cast<OverlayProcess*>(data)->receive();
    return G_SOURCE_CONTINUE;
}

void OverlayProcess::receive() {
    std::string packet(longestOverlayPacket, '\0');
    const ssize_t length = recv(socket_, packet.data(), packet.size(), MSG_DONTWAIT);
    if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    if (length <= 0) {
        hangUp();
        return;
    }
    packet.resize(static_cast<std::size_t>(length));
    if (const auto message = decodedPacket(packet)) {
        obey(*message);
    }
}

void OverlayProcess::obey(const OverlayMessage& message) {
    using Kind = OverlayMessage::Kind;
    const auto number = [&](std::size_t field) {
        return field < message.fields.size() ? std::strtoul(message.fields[field].c_str(), nullptr, 10) : 0;
    };
    if (message.kind == Kind::menuClosed) {
        isMenuOpen_ = false;
        lingerOrStay();
    } else if (message.kind == Kind::rowChosen) {
        events_.rowChosen(number(0));
    } else if (message.kind == Kind::windowPainted) {
        events_.windowPainted(static_cast<std::uint32_t>(number(0)), static_cast<int>(number(1)));
    }
}

void OverlayProcess::lingerOrStay() {
    if (lingerSource_ != 0) {
        g_source_remove(std::exchange(lingerSource_, 0));
    }
    if (socket_ >= 0 && !isTextShown_ && !isMenuOpen_) {
        lingerSource_ = g_timeout_add_seconds(lingeringTime, lingeredEnough, this);
    }
}

gboolean OverlayProcess::lingeredEnough(gpointer data) {
    auto& overlay = *static_cast<OverlayProcess*>(data);
    overlay.lingerSource_ = 0;
    overlay.hangUp();
    return G_SOURCE_REMOVE;
}

}  // namespace vantrel::desktop
