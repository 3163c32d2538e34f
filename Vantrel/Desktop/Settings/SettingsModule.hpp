#pragma once

#include <string>

#include "Vantrel/Interface/PreferencesWindowView.hpp"

namespace vantrel::desktop {

/// What the agent and the module that draws the settings window say to each other. The module is a shared object,
/// loaded when the window is first opened, so that a toolkit weighs nothing in an agent whose settings are left alone.
/// Both come from one build: C++ objects pass between them, so a module of another version is refused.
struct SettingsModule {
    /// The module's function of that name: fills `made` for this version of the program and this windowing system.
    static constexpr const char* entryPoint = "vantrelSettingsModule";

    /// The version that both must have.
    static constexpr const char* version = VANTREL_VERSION;

    /// The entry point's form. Returns null, without touching `problem`, when the versions differ; null with one line
    /// in `problem` when the window cannot be shown here. `windowingSystem` is the toolkit's name for it ("xcb").
    using EntryPoint = PreferencesWindowViewFactory* (*)(const char* agentVersion, const char* windowingSystem,
                                                         std::string& problem);
};

}  // namespace vantrel::desktop
