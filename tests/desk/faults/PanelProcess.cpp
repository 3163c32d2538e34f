#include "tests/desk/faults/PanelProcess.hpp"

#include <fstream>
#include <memory>
#include <string>

namespace vantrel::desk {

PanelProcess::PanelProcess(const std::string& busAddress, const Environment& environment) : directory_("panel") {
    ChildProcessOptions options;
    options.arguments = {VANTREL_TEST_PANEL, busAddress};
    options.environment = environment;
    options.standardOutput = directory_.path() / "items";
    process_ = std::make_unique<ChildProcess>(options);
}

bool PanelProcess::waitForItems(std::size_t count) {
    return waitUntil([&] {
        std::ifstream items(directory_.path() / "items");
        std::size_t lines = 0;
        for (std::string line; std::getline(items, line);) {
            ++lines;
        }
        return lines >= count;
    });
}

}  // namespace vantrel::desk
