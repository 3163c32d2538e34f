#include "Vantrel/Platform/Desktop/StatusItem/PanelPrograms.hpp"

#include "Vantrel/Platform/Desktop/StatusItem/GLibHandles.hpp"

#include <array>
#include <utility>

namespace vantrel::desktop {

namespace {

// The programs that own org.kde.StatusNotifierWatcher, as seen on each desktop (docs/panels.md).
constexpr std::array knownPrograms{
    std::pair{std::string_view("gnome-shell"), PanelProgram{.drawsLabel = true, .isQt = false}},
    std::pair{std::string_view("mate-panel"), PanelProgram{.drawsLabel = true, .isQt = false}},
    std::pair{std::string_view("notification-ar"), PanelProgram{.drawsLabel = true, .isQt = false}},  // MATE's applet
    std::pair{std::string_view("ayatana-indicat"), PanelProgram{.drawsLabel = true, .isQt = false}},
    std::pair{std::string_view("indicator-appli"), PanelProgram{.drawsLabel = true, .isQt = false}},
    std::pair{std::string_view("kded5"), PanelProgram{.drawsLabel = false, .isQt = true}},  // Plasma 5's watcher
    std::pair{std::string_view("kded6"), PanelProgram{.drawsLabel = false, .isQt = true}},
    std::pair{std::string_view("plasmashell"), PanelProgram{.drawsLabel = false, .isQt = true}},
    std::pair{std::string_view("lxqt-panel"), PanelProgram{.drawsLabel = false, .isQt = true}},
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
    // Not by a stream: those bring the library's locales along, a megabyte in the resting agent.
    const std::string path = "/proc/" + std::to_string(process) + "/comm";
    gchar* rawText = nullptr;
    if (!g_file_get_contents(path.c_str(), &rawText, nullptr, nullptr)) {
        return {};
    }
    const GCharPointer text(rawText);
    const std::string name = text.get();
    return name.substr(0, name.find('\n'));
}

}  // namespace vantrel::desktop
