// What happens around the agent between two jumps in a Wayland session.
#include <stdexcept>

#include "tests/desk/wayland/support/TypingWindow.hpp"
#include "tests/soak/wayland/JumpRun.hpp"

namespace vantrel::soak {

struct JumpRun::Disturbance {
    int weight;  ///< how often it happens among a hundred
    const char* name;
    void (JumpRun::*happen)();

    static const std::array<Disturbance, 8> all;
};

const std::array<JumpRun::Disturbance, 8> JumpRun::Disturbance::all{
    {{35, "layouts, scales, rotations", &JumpRun::changeDisplays},
     {10, "outputs plugged in or pulled out", &JumpRun::plug},
     {10, "configuration read again", &JumpRun::reconfigure},
     {10, "keyboard layout switched", &JumpRun::chooseKeyboardLayout},
     {5, "Caps Lock, Num Lock", &JumpRun::toggleLocks},
     {10, "bursts of wrong URLs", &JumpRun::openWrongURLs},
     {10, "menu open", &JumpRun::jumpWithMenuOpen},
     {10, "button held", &JumpRun::jumpWithButtonHeld}}};

void JumpRun::disturb() {
    int choice = random_.between(1, 100);
    for (const Disturbance& one : Disturbance::all) {
        choice -= one.weight;
        if (choice <= 0) {
            ++disturbances_[one.name];
            (this->*one.happen)();
            return;
        }
    }
}

void JumpRun::changeDisplays() {
    session_->show(randomLayout(random_, session_->outputs(), session_->shapes()));
    jumper_.sees();
    isPointerLost_ = true;
}

void JumpRun::plug() {
    session_->plug();
    // The rest of it is done by those that come and go with the layout.
    changeDisplays();
}

void JumpRun::reconfigure() {
    session_->reconfigure();
    isPointerLost_ = true;
    reconfigured_ = std::chrono::steady_clock::now();
}

void JumpRun::chooseKeyboardLayout() {
    session_->chooseKeyboardLayout(static_cast<unsigned>(random_.between(0, 2)));
}

void JumpRun::toggleLocks() {
    session_->person().type({random_.onceIn(2) ? desk::keys::capsLock : desk::keys::numLock});
}

void JumpRun::openWrongURLs() {
    static const std::vector<std::string> wrong{"vantrel:bogus", "https://example.org/", "vantrel://[", "vantrel:%zz"};
    std::vector<std::string> urls;
    for (int left = random_.between(10, 200); left > 0; --left) {
        urls.push_back(random_.oneOf(wrong));
    }
    session_->openURLs(urls);
}

void JumpRun::jumpWithMenuOpen() {
    const Side side = random_.onceIn(2) ? Side::previous : Side::next;
    const desk::LayoutPoint departure = bringToNewPlace(side);
    auto window = std::make_unique<desk::TypingWindow>(session_->desk().compositor().socket());
    session_->person().type({desk::keys::space});
    if (!desk::waitUntil([&] { return window->presses() > 0; })) {
        throw std::runtime_error("a window does not get what is typed");
    }
    window->openMenu();
    count(jumper_.jumpUnseen(departure, side, randomRequest(), [&] {
        window.reset();
        session_->person().synchronise();
    }));
}

void JumpRun::jumpWithButtonHeld() {
    const Side side = random_.onceIn(2) ? Side::previous : Side::next;
    const desk::LayoutPoint departure = bringToNewPlace(side);
    session_->person().pressButton();
    count(jumper_.jumpUnseen(departure, side, randomRequest(), [&] {
        session_->person().releaseButton();
        session_->person().synchronise();
    }));
}

}  // namespace vantrel::soak
