#include "Vantrel/Desktop/StatusItem/ItemIconLocation.hpp"

#include <glib.h>

#include <filesystem>
#include <system_error>

namespace vantrel::desktop {

namespace {

constexpr auto iconName = "org.vantrel.Vantrel";

bool isDataFolderOfDesktop(const std::filesystem::path& folder) {
    for (const gchar* const* known = g_get_system_data_dirs(); *known != nullptr; ++known) {
        std::error_code error;
        if (std::filesystem::equivalent(*known, folder, error)) {
            return true;
        }
    }
    return false;
}

}  // namespace

ItemIconLocation itemIconLocation() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path data = (program.parent_path() / VANTREL_DATA_FROM_BIN).lexically_normal();
    const std::filesystem::path icons = data / "icons";
    if (error || !std::filesystem::exists(icons / "hicolor/scalable/apps" / (std::string(iconName) + ".svg"), error)) {
        return {};
    }
    return {.name = iconName, .themePath = isDataFolderOfDesktop(data) ? std::string() : icons.string()};
}

}  // namespace vantrel::desktop
