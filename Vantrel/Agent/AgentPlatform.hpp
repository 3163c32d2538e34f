#pragma once

#include <memory>
#include <optional>

#include "Vantrel/Agent/ProgramFile.hpp"
#include "Vantrel/Desktop/Application/DesktopApplication.hpp"
#include "Vantrel/Desktop/GLibURLParser.hpp"
#include "Vantrel/Desktop/Loop/GLibMainQueue.hpp"
#include "Vantrel/Desktop/Loop/GLibRunLoop.hpp"
#include "Vantrel/Desktop/RandomUUIDGenerator.hpp"
#include "Vantrel/Desktop/SettingsWindow/SettingsProgram.hpp"
#include "Vantrel/Desktop/Sound/RemoteSoundPlayer.hpp"
#include "Vantrel/Desktop/StatusItem/DesktopStatusBar.hpp"
#include "Vantrel/Desktop/Store/SQLiteUserDefaults.hpp"
#include "Vantrel/Platform/DisplaySession.hpp"
#include "Vantrel/Platform/Platform.hpp"

namespace vantrel {

/// Everything that the agent runs on in this session. Each ability lives here; the controller only refers to them.
class AgentPlatform {
  public:
    /// Takes the session that this process is the agent of, opens the store and prepares the main loop.
    explicit AgentPlatform(std::unique_ptr<DisplaySession> session);
    ~AgentPlatform();
    AgentPlatform(const AgentPlatform&) = delete;
    AgentPlatform& operator=(const AgentPlatform&) = delete;

    desktop::DesktopApplication& application() { return application_; }

    /// Runs the main loop until the end of the application; the status for the end of the process, or none when the
    /// program is to be started anew.
    std::optional<int> run();

    /// The abilities as the controller asks for them.
    Platform abilities();

  private:
    [[nodiscard]] desktop::Helper::Start starterOf(const char* helper) const;
    /// Ends in the ordinary way, and has the program started anew.
    void beginAnew();

    // In the order in which one may use the other.
    std::unique_ptr<DisplaySession> session_;
    desktop::GLibMainQueue mainQueue_;
    desktop::GLibRunLoop runLoop_;
    desktop::SQLiteUserDefaults defaults_;
    desktop::DesktopStatusBar statusBar_;
    desktop::RemoteSoundPlayer sounds_;
    desktop::RandomUUIDGenerator uuids_;
    desktop::GLibURLParser urls_;
    desktop::SettingsProgram preferencesWindowViews_;
    desktop::DesktopApplication application_;
    ProgramFileWatch programFile_;
    bool beginsAnew_ = false;
};

}  // namespace vantrel
