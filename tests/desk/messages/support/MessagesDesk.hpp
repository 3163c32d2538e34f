#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include "Vantrel/Channel/Channel.hpp"
#include "Vantrel/Channel/ScreenMessages.hpp"
#include "tests/desk/messages/support/Camera.hpp"
#include "tests/desk/messages/support/TypingWindow.hpp"
#include "tests/desk/wayland/support/SwayDesk.hpp"

namespace vantrel::desk {

/// A session of sway for tests of the program for messages, which the test talks to as the agent does.
class MessagesDesk : public testing::Test {
  protected:
    /// The main display at (0, 0) and a second one to its left. Typing windows leave room for the pointer, and keep the
    /// keyboard when it goes elsewhere.
    static SwayOptions usualOptions();

    explicit MessagesDesk(const SwayOptions& options = usualOptions(), const std::string& layouts = "us");

    static constexpr auto mainOutput = "HEADLESS-1";
    static constexpr int mainWidth = 800;
    static constexpr int mainHeight = 600;
    static constexpr auto secondOutput = "HEADLESS-2";
    static constexpr int secondWidth = 640;
    static constexpr int secondHeight = 480;
    static constexpr LayoutPoint secondCorner{.x = -secondWidth, .y = 100};
    static constexpr LayoutPoint centreOfSecond{.x = -320, .y = 340};

    /// Starts the program; `agent` is the agent's end then.
    void startOverlay();
    /// Kills the program that the process has started, as a fault of its own would.
    static void killOverlay(pid_t parent = getpid());

    void show(const std::string& text) { agent.send(messageOf(ScreenText{.text = text})); }
    void hide() { agent.send(Message(screen_messages::hideText)); }

    /// Opens a window in the middle of the main display and waits until it is seen.
    std::unique_ptr<TypingWindow> openWindow();

    /// Remembers how the outputs look without anything of ours.
    void rememberTheScreen();
    /// What has come onto the output since, but for the pointer's picture; none while nothing has.
    std::optional<overlay::Rect> seenOn(const std::string& output);
    bool waitUntilSeenOn(const std::string& output);
    bool waitUntilNothingIsSeen();

    /// Takes an output away as by its plug; false where the compositor cannot do that (sway before 1.8).
    bool unplug(const std::string& output);

    /// Moves the pointer as a hand does.
    void movePointer(LayoutPoint point);
    /// Puts the pointer there, also where something covers what the person watches it with.
    void putPointer(LayoutPoint point);

    [[nodiscard]] std::filesystem::path socket() { return desk.sway().socket(); }

    SwayDesk desk;
    Camera camera;
    Channel agent;
    std::map<std::string, Picture> before;
    LayoutPoint pointer{.x = -1e6, .y = -1e6};
    LayoutPoint pointerBefore = pointer;  ///< when the screen was remembered
};

}  // namespace vantrel::desk
