#include "tests/soak/wayland/Leftovers.hpp"

#include <fstream>
#include <sstream>

namespace vantrel::soak {

std::set<std::string> filesOfAgents(const std::filesystem::path& runtimeDirectory) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(runtimeDirectory)) {
        const std::string name = entry.path().filename();
        if (name.starts_with("vantrel")) {
            names.insert(name);
        }
    }
    return names;
}

std::vector<std::string> helpersOfAgents(const std::filesystem::path& runtimeDirectory) {
    std::vector<std::string> names;
    for (const auto& process : std::filesystem::directory_iterator("/proc")) {
        std::string name;
        std::getline(std::ifstream(process.path() / "comm"), name);
        if (!name.starts_with("vantrel-") || name.starts_with("vantrel-soak")) {
            continue;
        }
        std::ostringstream environment;
        environment << std::ifstream(process.path() / "environ").rdbuf();
        if (environment.str().find(runtimeDirectory.native()) != std::string::npos) {
            names.push_back(name);
        }
    }
    return names;
}

}  // namespace vantrel::soak
