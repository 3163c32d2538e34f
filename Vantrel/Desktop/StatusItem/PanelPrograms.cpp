#include "Vantrel/Desktop/StatusItem/PanelPrograms.hpp"

#include "Vantrel/Handles/FileContents.hpp"

#include <array>
#include <utility>

namespace vantrel::desktop {

namespace {

// The programs that own org.kde.StatusNotifierWatcher, as seen on each desktop (docs/panels.md).
constexpr PanelProgram labelDrawer{.drawsLabel = true};
constexpr PanelProgram plasma{.isQt = true, .opensRefusedMenu = true};
constexpr std::array knownPrograms{
    // Its appindicator extension.
    std::pair{std::string_view("gnome-shell"), PanelProgram{.drawsLabel = true, .missesFirstLabel = true}},
    std::pair{std::string_view("mate-panel"), labelDrawer},
    std::pair{std::string_view("notification-ar"), labelDrawer},  // MATE's applet
    std::pair{std::string_view("ayatana-indicat"), labelDrawer},
    std::pair{std::string_view("indicator-appli"), labelDrawer},
    std::pair{std::string_view("kded5"), plasma},  // Plasma 5's watcher
    std::pair{std::string_view("kded6"), plasma},
    std::pair{std::string_view("plasmashell"), plasma},
    std::pair{std::string_view("lxqt-panel"), PanelProgram{.isQt = true}},
};

}  // namespace

PanelProgram panelProgram(std::string_view processName) {
    for (const auto& [name, program] : knownPrograms) {
        if (name == processName) {
            return program;
        }
    }
    return {};
}

std::string processName(std::uint32_t process) {
    const std::string name = contentsOf("/proc/" + std::to_string(process) + "/comm").value_or("");
    return name.substr(0, name.find('\n'));
}

}  // namespace vantrel::desktop
