#include "Vantrel/Backends/Gnome/ExtensionState.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::gnome {

namespace {

// ExtensionState of GNOME Shell.
constexpr double failed = 3;
constexpr double outOfDate = 4;

std::string textIn(GVariant* dictionary, const char* key) {
    const char* text = nullptr;
    return g_variant_lookup(dictionary, key, "&s", &text) != FALSE ? text : "";
}

}  // namespace

std::string whyExtensionIsMissing(GVariant* information, bool isInstalled, const std::string& shellVersion) {
    constexpr int firstWithModules = 45;
    const int version = std::atoi(shellVersion.c_str());
    if (version > 0 && version < firstWithModules) {
        return "GNOME before 45 cannot load Vantrel's extension, which moves the pointer on Wayland: choose GNOME on "
               "Xorg at login";
    }
    const GVariantPointer facts(information == nullptr ? nullptr : g_variant_get_child_value(information, 0));
    double state = 0;
    if (facts == nullptr || g_variant_lookup(facts.get(), "state", "d", &state) == FALSE) {
        return isInstalled ? "GNOME does not know Vantrel's extension yet: log out and in once"
                           : "GNOME lets only an extension move the pointer: install the package vantrel-gnome-shell, "
                             "then log out and in once";
    }
    if (state == failed) {
        std::string error = textIn(facts.get(), "error");
        std::replace(error.begin(), error.end(), '\n', ' ');
        return "Vantrel's extension failed in GNOME: " + error;
    }
    if (state == outOfDate) {
        return "Vantrel's extension was not made for this version of GNOME";
    }
    return std::string("Vantrel's extension is off in GNOME: gnome-extensions enable ") + extensionIdentifier;
}

bool isExtensionInstalled() {
    const std::filesystem::path folder = std::filesystem::path("gnome-shell/extensions") / extensionIdentifier;
    std::error_code ignored;
    if (std::filesystem::exists(g_get_user_data_dir() / folder, ignored)) {
        return true;
    }
    for (const char* const* directory = g_get_system_data_dirs(); *directory != nullptr; ++directory) {
        if (std::filesystem::exists(*directory / folder, ignored)) {
            return true;
        }
    }
    return false;
}

}  // namespace vantrel::gnome
