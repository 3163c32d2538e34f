#pragma once

#include <unistd.h>

#include "Vantrel/Channel/Channel.hpp"
#include "Vantrel/Channel/ScreenMessages.hpp"
#include "tests/desk/messages/support/ScreenDesk.hpp"
#include "tests/desk/wayland/support/SwayDesk.hpp"
#include "tests/desk/wayland/support/TypingWindow.hpp"

namespace vantrel::desk {

/// A session of sway for tests of the program for messages, which the test talks to as the agent does.
class MessagesDesk : public ScreenDesk {
  protected:
    /// Typing windows leave room for the pointer, and keep the keyboard when it goes elsewhere.
    static SwayOptions usualOptions();

    explicit MessagesDesk(const SwayOptions& options = usualOptions(), const std::string& layouts = "us");

    /// Starts the program; `agent` is the agent's end then.
    void startOverlay();
    /// Kills the program that the process has started, as a fault of its own would.
    static void killOverlay(pid_t parent = getpid());

    void show(const std::string& text) { agent.send(messageOf(ScreenText{.text = text})); }
    void hide() { agent.send(Message(screen_messages::hideText)); }

    /// Opens a window in the middle of the main display and waits until it is seen.
    std::unique_ptr<TypingWindow> openWindow();

    /// Takes an output away as by its plug; false where the compositor cannot do that (sway before 1.8).
    bool unplug(const std::string& output);

    /// Puts the pointer there, also where something covers what the person watches it with.
    void putPointer(LayoutPoint point);

    SwayDesk& desk = static_cast<SwayDesk&>(*session);
    Channel agent;
};

}  // namespace vantrel::desk
