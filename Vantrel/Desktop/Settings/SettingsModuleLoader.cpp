#include "Vantrel/Desktop/Settings/SettingsModuleLoader.hpp"

#include <dlfcn.h>

#include <system_error>
#include <utility>

#include "Vantrel/Desktop/Settings/SettingsModule.hpp"

namespace vantrel::desktop {

namespace {

/// Why there is no window, and what to do about it in two or three words.
PreferencesWindowViewResult noWindow(std::string problem, std::string flashText) {
    return {.view = nullptr, .problem = std::move(problem), .flashText = std::move(flashText)};
}

PreferencesWindowViewResult notInstalled(const std::string& reason) {
    return noWindow("install the package vantrel-settings to open the settings (" + reason + ")",
                    "Install vantrel-settings");
}

}  // namespace

SettingsModuleLoader::SettingsModuleLoader(std::string windowingSystem, std::filesystem::path moduleFile)
    : windowingSystem_(std::move(windowingSystem)), moduleFile_(std::move(moduleFile)) {}

SettingsModuleLoader::~SettingsModuleLoader() = default;

std::filesystem::path SettingsModuleLoader::installedModule() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return (program.parent_path() / VANTREL_MODULES_FROM_BIN / "vantrel-settings.so").lexically_normal();
}

PreferencesWindowViewResult SettingsModuleLoader::makePreferencesWindowView() {
    if (!windows_) {
        PreferencesWindowViewResult refusal = loadModule();
        if (!windows_) {
            return refusal;
        }
    }
    return windows_->makePreferencesWindowView();
}

PreferencesWindowViewResult SettingsModuleLoader::loadModule() {
    // Never closed: a toolkit leaves threads and exit handlers behind that must not lose their code.
    void* const module = dlopen(moduleFile_.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        return notInstalled(dlerror());
    }
    void* const symbol = dlsym(module, SettingsModule::entryPoint);
    if (symbol == nullptr) {
        return notInstalled(dlerror());
    }
    std::string problem;
    const auto entryPoint = reinterpret_cast<SettingsModule::EntryPoint>(symbol);
    windows_.reset(entryPoint(SettingsModule::version, windowingSystem_.c_str(), problem));
    if (windows_) {
        return {};
    }
    if (problem.empty()) {
        // An upgrade while the agent runs.
        return noWindow("start Vantrel again to open the settings (" + moduleFile_.string() + " is of another version)",
                        "Restart Vantrel");
    }
    return noWindow("the settings cannot be shown: " + problem, "Settings unavailable");
}

}  // namespace vantrel::desktop
