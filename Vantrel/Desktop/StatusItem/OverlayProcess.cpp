#include "Vantrel/Desktop/StatusItem/OverlayProcess.hpp"

#include <chrono>
#include <cstdio>
#include <string>
#include <utility>

namespace vantrel::desktop {

namespace {

constexpr std::chrono::seconds lingeringTime{5};

}  // namespace

OverlayProcess::OverlayProcess(Helper::Start start, RowChosen rowChosen)
    : rowChosen_(std::move(rowChosen)),
      program_(std::move(start), {.received = [this](const Message& message) { obey(message); },
                                  .ended =
                                      [this](const std::string& otherVersion) {
                                          if (!otherVersion.empty()) {
                                              std::fputs(
                                                  "vantrel: start Vantrel again to see its messages (they are "
                                                  "of another version)\n",
                                                  stderr);
                                          }
                                          ended();
                                      }}) {}

void OverlayProcess::showText(const ScreenText& text) {
    if (program_.start()) {
        isTextShown_ = true;
        program_.send(messageOf(text));
        lingerOrStay();
    }
}

void OverlayProcess::hideText() {
    if (std::exchange(isTextShown_, false)) {
        program_.send(Message(screen_messages::hideText));
        lingerOrStay();
    }
}

void OverlayProcess::openMenu(const std::vector<MenuRow>& rows) {
    if (!rows.empty() && program_.start()) {
        isMenuOpen_ = true;
        program_.send(messageOf(OpenMenu{rows}));
        lingerOrStay();
    }
}

void OverlayProcess::updateMenu(const std::vector<MenuRow>& rows) {
    if (isMenuOpen_) {
        program_.send(messageOf(UpdateMenu{rows}));
    }
}

void OverlayProcess::obey(const Message& message) {
    if (message.is(screen_messages::menuClosed, "()")) {
        isMenuOpen_ = false;
        lingerOrStay();
    } else if (const auto chosen = valueOf<ChosenRow>(message)) {
        rowChosen_(chosen->row);
    }
}

void OverlayProcess::ended() {
    isTextShown_ = false;
    isMenuOpen_ = false;
}

void OverlayProcess::lingerOrStay() {
    if (isTextShown_ || isMenuOpen_) {
        program_.keep();
    } else {
        program_.endAfter(lingeringTime);
    }
}

}  // namespace vantrel::desktop
