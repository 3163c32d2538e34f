#include "Vantrel/Desktop/Sound/CanberraSoundPlayer.hpp"

#include <sys/socket.h>

#include <cerrno>
#include <utility>

namespace vantrel::desktop {

CanberraSoundPlayer::CanberraSoundPlayer(std::filesystem::path helper) : helper_(std::move(helper)) {}

void CanberraSoundPlayer::play(std::string_view soundName) {
    if (socket_.isOpen() && !isHelperReady()) {
        return;
    }
    // The helper may be about to go: a new one then gets the sound.
    if (socket_.isOpen() && send(soundName)) {
        return;
    }
    socket_ = startHelper(helper_);
    if (socket_.isOpen()) {
        send(soundName);
    }
}

/// Takes in the answer that is due. Answers are looked for here only: none ever wakes the agent.
bool CanberraSoundPlayer::isHelperReady() {
    if (!isAnswerDue_) {
        return true;
    }
    char answer = 0;
    const ssize_t length = recv(socket_.get(), &answer, sizeof answer, MSG_DONTWAIT);
    if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
        return false;
    }
    isAnswerDue_ = false;
    if (length <= 0) {
        socket_.reset();  // it has ended
    }
    return true;
}

bool CanberraSoundPlayer::send(std::string_view soundName) {
    isAnswerDue_ = ::send(socket_.get(), soundName.data(), soundName.size(), MSG_NOSIGNAL | MSG_DONTWAIT) >= 0;
    return isAnswerDue_;
}

}  // namespace vantrel::desktop
