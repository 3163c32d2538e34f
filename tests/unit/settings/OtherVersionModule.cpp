// A settings module that finds the agent to be of another version.
#include "Vantrel/Desktop/Settings/SettingsModule.hpp"

extern "C" vantrel::PreferencesWindowViewFactory* vantrelSettingsModule(const char* /*agentVersion*/,
                                                                        const char* /*windowingSystem*/,
                                                                        std::string& /*problem*/) {
    return nullptr;
}
