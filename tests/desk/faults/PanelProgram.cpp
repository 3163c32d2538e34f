// A panel as a process of its own, which can be stopped. Prints a line for each item that registers.
//
//     vantrel-test-panel BUS-ADDRESS
#include <cstdio>
#include <exception>

#include "tests/desk/status/TestPanel.hpp"

int main(int count, char** arguments) {
    if (count != 2) {
        return 2;
    }
    try {
        const vantrel::desk::TestPanel panel(arguments[1]);
        std::size_t told = 0;
        while (true) {
            // Before waiting: the first may have come while the panel waited for its name.
            for (; told < panel.items().size(); ++told) {
                std::printf("%s\n", panel.items()[told].c_str());
                std::fflush(stdout);
            }
            g_main_context_iteration(nullptr, TRUE);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
