// What the agent shows on the screen itself: short texts and, where no panel has one, the menu. A program of its own,
// because a font system in memory weighs more than the rest of the agent; the agent starts it when it is needed and
// ends it by hanging up.

#include <cstdlib>
#include <utility>

#include "helpers/messages/Overlay.hpp"

int main() {
    auto screen = vantrel::overlay::Screen::connect();
    if (!screen) {
        // In silence: the agent, which has the same display, says so itself.
        return EXIT_FAILURE;
    }
    vantrel::Channel agent{vantrel::FileDescriptor(vantrel::Channel::helperDescriptor)};
    vantrel::overlay::Overlay(std::move(screen), std::move(agent)).run();
    return EXIT_SUCCESS;
}
