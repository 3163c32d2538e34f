#include "Vantrel/Platform/Desktop/Settings/SettingsModuleLoader.hpp"

#include <dlfcn.h>

#include <system_error>
#include <utility>

#include "Vantrel/Platform/Desktop/Settings/SettingsModule.hpp"

namespace vantrel::desktop {

namespace {

constexpr const char* packageName = "vantrel-settings";

std::string missing(const std::string& reason) {
    return std::string("install the package ") + packageName + " to open the settings (" + reason + ")";
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
        std::string problem = loadModule();
        if (!windows_) {
            return {.view = nullptr, .problem = std::move(problem), .flashText = std::string("Install ") + packageName};
        }
    }
    return windows_->makePreferencesWindowView();
}

std::string SettingsModuleLoader::loadModule() {
    // Never closed: a toolkit leaves threads and exit handlers behind that must not lose their code.
    void* const module = dlopen(moduleFile_.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        return missing(dlerror());
    }
    void* const symbol = dlsym(module, SettingsModule::entryPoint);
    if (symbol == nullptr) {
        return missing(dlerror());
    }
    std::string problem;
    const auto entryPoint = reinterpret_cast<SettingsModule::EntryPoint>(symbol);
    windows_.reset(entryPoint(SettingsModule::version, windowingSystem_.c_str(), problem));
    if (windows_) {
        return {};
    }
    return missing(problem.empty() ? moduleFile_.string() + " is of another version" : problem);
}

}  // namespace vantrel::desktop
