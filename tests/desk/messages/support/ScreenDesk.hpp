#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "helpers/messages/Rect.hpp"
#include "tests/desk/messages/support/Camera.hpp"
#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {

/// A Wayland session for tests of what is seen on its screens.
class ScreenDesk : public testing::Test {
  protected:
    /// The main display at (0, 0) and a second one to its left.
    static std::vector<PrivateOutput> usualOutputs() {
        return {{.mode = "800x600"}, {.mode = "640x480", .x = -640, .y = 100}};
    }

    explicit ScreenDesk(std::unique_ptr<WaylandDesk> desk);

    static constexpr auto mainOutput = "HEADLESS-1";
    static constexpr int mainWidth = 800;
    static constexpr int mainHeight = 600;
    static constexpr auto secondOutput = "HEADLESS-2";
    static constexpr int secondWidth = 640;
    static constexpr int secondHeight = 480;
    static constexpr LayoutPoint secondCorner{.x = -secondWidth, .y = 100};
    static constexpr LayoutPoint centreOfSecond{.x = -320, .y = 340};

    /// Remembers how the outputs look without anything of ours.
    void rememberTheScreen();
    /// What has come onto the output since, but for the pointer's picture; none while nothing has.
    std::optional<overlay::Rect> seenOn(const std::string& output);
    bool waitUntilSeenOn(const std::string& output);
    bool waitUntilNothingIsSeen();

    /// Moves the pointer as a hand does.
    void movePointer(LayoutPoint point);

    [[nodiscard]] std::filesystem::path socket() { return session->compositor().socket(); }

    std::unique_ptr<WaylandDesk> session;
    Camera camera;
    std::map<std::string, Picture> before;
    LayoutPoint pointer{.x = -1e6, .y = -1e6};
    LayoutPoint pointerBefore = pointer;  ///< when the screen was remembered
};

}  // namespace vantrel::desk
