#include "tests/desk/support/HelperProcess.hpp"

#include <fstream>

namespace vantrel::desk {

std::optional<pid_t> helperOf(pid_t process, const std::string& program) {
    const std::string self = std::to_string(process);
    std::ifstream file("/proc/" + self + "/task/" + self + "/children");
    pid_t child = 0;
    while (file >> child) {
        std::string name;
        std::getline(std::ifstream("/proc/" + std::to_string(child) + "/comm") >> std::ws, name);
        // The kernel keeps fifteen characters of a name.
        if (name == program.substr(0, 15)) {
            return child;
        }
    }
    return std::nullopt;
}

}  // namespace vantrel::desk
