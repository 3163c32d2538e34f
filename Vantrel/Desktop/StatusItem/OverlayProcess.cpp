#include "Vantrel/Desktop/StatusItem/OverlayProcess.hpp"

#include <glib-unix.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "Vantrel/Desktop/HelperProgram.hpp"

namespace vantrel::desktop {

namespace {

constexpr guint lingeringTime = 5;         // seconds
constexpr std::size_t longestAnswer = 64;  // bytes, of a few numbers

std::vector<std::string> textFields(const std::string& text, const ItemFont& font) {
    return {text, std::to_string(static_cast<int>(font.size)),
            font.weight == FontWeight::semibold ? "semibold" : "regular"};
}

}  // namespace

OverlayProcess::OverlayProcess(RowChosen rowChosen) : rowChosen_(std::move(rowChosen)) {}

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

bool OverlayProcess::start() {
    if (socket_.isOpen()) {
        return true;
    }
    socket_ = startHelper(helperProgram("vantrel-overlay"));
    if (!socket_.isOpen()) {
        return false;
    }
    socketSource_ = g_unix_fd_add(socket_.get(), G_IO_IN, readable, this);
    return true;
}

void OverlayProcess::hangUp() {
    if (lingerSource_ != 0) {
        g_source_remove(std::exchange(lingerSource_, 0));
    }
    if (socket_.isOpen()) {
        g_source_remove(std::exchange(socketSource_, 0));
        socket_.reset();
    }
    isTextShown_ = false;
    isMenuOpen_ = false;
}

void OverlayProcess::send(const OverlayMessage& message) {
    const std::string packet = encodedPacket(message);
    if (!socket_.isOpen() || packet.size() > longestOverlayPacket) {
        return;
    }
    // A program that has ended or does not read is given up; the next thing to show starts another.
    if (::send(socket_.get(), packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT) < 0) {
        hangUp();
    }
}

gboolean OverlayProcess::readable(gint /*socket*/, GIOCondition /*condition*/, gpointer data) {
    static_cast<OverlayProcess*>(data)->receive();
    return G_SOURCE_CONTINUE;
}

void OverlayProcess::receive() {
    std::array<char, longestAnswer> packet{};
    const ssize_t length = recv(socket_.get(), packet.data(), packet.size(), MSG_DONTWAIT);
    if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    if (length <= 0) {
        hangUp();
        return;
    }
    if (const auto message = decodedPacket({packet.data(), static_cast<std::size_t>(length)})) {
        obey(*message);
    }
}

void OverlayProcess::obey(const OverlayMessage& message) {
    using Kind = OverlayMessage::Kind;
    if (message.kind == Kind::menuClosed) {
        isMenuOpen_ = false;
        lingerOrStay();
    } else if (message.kind == Kind::rowChosen && !message.fields.empty()) {
        rowChosen_(std::strtoul(message.fields.front().c_str(), nullptr, 10));
    }
}

void OverlayProcess::lingerOrStay() {
    if (lingerSource_ != 0) {
        g_source_remove(std::exchange(lingerSource_, 0));
    }
    if (socket_.isOpen() && !isTextShown_ && !isMenuOpen_) {
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
