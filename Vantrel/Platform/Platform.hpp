#pragma once

#include "Vantrel/Platform/Application.hpp"
#include "Vantrel/Platform/DisplayServices.hpp"
#include "Vantrel/Platform/HotKeyServices.hpp"
#include "Vantrel/Platform/MainQueue.hpp"
#include "Vantrel/Platform/PointerServices.hpp"
#include "Vantrel/Platform/RunLoop.hpp"
#include "Vantrel/Platform/SoundPlayer.hpp"
#include "Vantrel/Platform/StatusItem.hpp"
#include "Vantrel/Platform/URLParser.hpp"
#include "Vantrel/Platform/UUIDGenerator.hpp"
#include "Vantrel/Platform/UserDefaults.hpp"

namespace vantrel {

class PreferencesWindowViewFactory;

/// The abilities that the controller is built on. All outlive the controller.
struct Platform {
    Application& application;
    DisplayServices& displays;
    PointerReader& pointerReader;
    PointerWarper& pointerWarper;
    HotKeyServices& hotKeys;
    MainQueue& mainQueue;
    RunLoop& runLoop;
    UserDefaults& standardUserDefaults;
    StatusBar& systemStatusBar;
    SoundPlayer& sounds;
    UUIDGenerator& uuids;
    URLParser& urls;
    PreferencesWindowViewFactory& preferencesWindowViews;
};

}  // namespace vantrel
