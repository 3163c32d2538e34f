// Starts that never become an agent: no display, wrong arguments, questions about the program.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/desk/program/ProgramRun.hpp"

namespace vantrel::desk {
namespace {

Environment withoutDisplay() {
    Environment environment = Environment::minimal();
    environment.set("HOME", "/nonexistent");
    return environment;
}

bool isOneLine(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n') == 1 && text.back() == '\n';
}

TEST(Program, version_noDisplay_isPrinted) {
    const ProgramOutcome outcome = runVantrel(withoutDisplay(), {"--version"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.standardOutput, "vantrel " VANTREL_VERSION "\n");
    EXPECT_EQ(outcome.standardError, "");
}

TEST(Program, help_noDisplay_isPrinted) {
    const ProgramOutcome outcome = runVantrel(withoutDisplay(), {"--help"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.standardOutput.rfind("Usage: vantrel", 0), 0U);
    EXPECT_NE(outcome.standardOutput.find("vantrel://teleport"), std::string::npos);
    EXPECT_EQ(outcome.standardError, "");
}

TEST(Program, help_cannotBePrinted_isAFailure) {
    EXPECT_EQ(runScript(withoutDisplay(), "exec $VANTREL --help > /dev/full").exitCode, 1);
}

TEST(Program, start_wrongArguments_oneLineAndTwo) {
    struct Case {
        std::vector<std::string> arguments;
        std::string line;
    };
    const std::vector<Case> cases{
        {{"--bogus"}, "vantrel: unknown option \"--bogus\" (try --help)\n"},
        {{"-x"}, "vantrel: unknown option \"-x\" (try --help)\n"},
        {{"next"}, "vantrel: not a URL: \"next\" (try --help)\n"},
        {{""}, "vantrel: not a URL: \"\" (try --help)\n"},
        {{"vantrel://next", "/tmp"}, "vantrel: not a URL: \"/tmp\" (try --help)\n"},
        {{"--", "--help"}, "vantrel: not a URL: \"--help\" (try --help)\n"},
        {{"\xff\x1b"}, "vantrel: not a URL: \"\xff?\" (try --help)\n"},
    };
    for (const auto& [arguments, line] : cases) {
        const ProgramOutcome outcome = runVantrel(withoutDisplay(), arguments);
        EXPECT_EQ(outcome.exitCode, 2) << line;
        EXPECT_EQ(outcome.standardOutput, "");
        EXPECT_EQ(outcome.standardError, line);
    }
}

TEST(Program, start_noDisplay_oneLineAndOne) {
    struct Case {
        const char* display;
        const char* waylandDisplay;
        const char* line;
    };
    for (const auto& [display, waylandDisplay, line] :
         {Case{nullptr, nullptr, "vantrel: no display: neither WAYLAND_DISPLAY nor DISPLAY is set\n"},
          Case{"", nullptr, "vantrel: no display: neither WAYLAND_DISPLAY nor DISPLAY is set\n"},
          Case{":4711", nullptr, "vantrel: cannot connect to the X display :4711\n"},
          Case{"nonsense", nullptr, "vantrel: cannot connect to the X display nonsense\n"},
          Case{nullptr, "wayland-4711", "vantrel: cannot connect to the Wayland display wayland-4711\n"},
          Case{":4711", "wayland-4711", "vantrel: cannot connect to the X display :4711\n"}}) {
        Environment environment = withoutDisplay();
        if (display != nullptr) {
            environment.set("DISPLAY", display);
        }
        if (waylandDisplay != nullptr) {
            environment.set("WAYLAND_DISPLAY", waylandDisplay);
        }
        for (const auto& arguments : {std::vector<std::string>{}, std::vector<std::string>{"vantrel://next"}}) {
            const ProgramOutcome outcome = runVantrel(environment, arguments);
            EXPECT_EQ(outcome.exitCode, 1);
            EXPECT_EQ(outcome.standardOutput, "");
            EXPECT_EQ(outcome.standardError, line);
            EXPECT_TRUE(isOneLine(outcome.standardError));
        }
    }
}

}  // namespace
}  // namespace vantrel::desk
