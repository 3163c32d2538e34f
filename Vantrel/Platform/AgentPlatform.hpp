#pragma once

#include <memory>

#include "Vantrel/Platform/Desktop/Application/DesktopApplication.hpp"
#include "Vantrel/Platform/Desktop/GLibURLParser.hpp"
#include "Vantrel/Platform/Desktop/Loop/GLibMainQueue.hpp"
#include "Vantrel/Platform/Desktop/Loop/GLibRunLoop.hpp"
#include "Vantrel/Platform/Desktop/RandomUUIDGenerator.hpp"
#include "Vantrel/Platform/Desktop/RestingMemory/RestingMemory.hpp"
#include "Vantrel/Platform/Desktop/Settings/SettingsModuleLoader.hpp"
#include "Vantrel/Platform/Desktop/Sound/CanberraSoundPlayer.hpp"
#include "Vantrel/Platform/Desktop/Sound/DelayedSoundPlayer.hpp"
#include "Vantrel/Platform/Desktop/StatusItem/DesktopStatusBar.hpp"
#include "Vantrel/Platform/Desktop/Store/SQLiteUserDefaults.hpp"
#include "Vantrel/Platform/Platform.hpp"
#include "Vantrel/Platform/X11/X11Platform.hpp"

namespace vantrel {

/// Everything that the agent runs on in this session. Each ability lives here; the controller only refers to them.
class AgentPlatform {
  public:
    /// Takes the display that this process is the agent of, opens the store and prepares the main loop.
    explicit AgentPlatform(std::unique_ptr<x11::X11Platform> display);
    ~AgentPlatform();
    AgentPlatform(const AgentPlatform&) = delete;
    AgentPlatform& operator=(const AgentPlatform&) = delete;

    desktop::DesktopApplication& application() { return application_; }

    /// The abilities as the controller asks for them.
    Platform abilities();

  private:
    // In the order in which one may use the other.
    std::unique_ptr<x11::X11Platform> display_;
    desktop::GLibMainQueue mainQueue_;
    desktop::GLibRunLoop runLoop_;
    desktop::RestingMemory restingMemory_;
    desktop::SQLiteUserDefaults defaults_;
    desktop::DesktopStatusBar statusBar_;
    desktop::CanberraSoundPlayer eventSounds_;
    desktop::DelayedSoundPlayer sounds_{eventSounds_, mainQueue_};
    desktop::RandomUUIDGenerator uuids_;
    desktop::GLibURLParser urls_;
    desktop::SettingsModuleLoader preferencesWindowViews_{"xcb"};
    desktop::DesktopApplication application_;
};

}  // namespace vantrel
