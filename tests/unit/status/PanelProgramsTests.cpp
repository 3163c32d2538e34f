#include "Vantrel/Desktop/StatusItem/PanelPrograms.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

namespace vantrel::desktop {
namespace {

TEST(PanelPrograms, panelProgram_known_saysWhetherItDrawsLabels) {
    EXPECT_TRUE(panelProgram("gnome-shell").drawsLabel);
    EXPECT_TRUE(panelProgram("gnome-shell").missesFirstLabel);
    EXPECT_TRUE(panelProgram("mate-panel").drawsLabel);
    EXPECT_FALSE(panelProgram("mate-panel").missesFirstLabel);
    EXPECT_FALSE(panelProgram("lxqt-panel").drawsLabel);
    EXPECT_TRUE(panelProgram("lxqt-panel").isQt);
}

TEST(PanelPrograms, panelProgram_unknown_isTakenNotToDrawThem) {
    EXPECT_FALSE(panelProgram("some-panel").drawsLabel);
    EXPECT_FALSE(panelProgram("").drawsLabel);
    EXPECT_FALSE(panelProgram("gnome-shell-too").drawsLabel);
}

TEST(PanelPrograms, processName_thisProcess_isTheKernelsName) {
    std::string expected;
    std::getline(std::ifstream("/proc/self/comm") >> std::ws, expected);
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(processName(static_cast<std::uint32_t>(getpid())), expected);
}

TEST(PanelPrograms, processName_noSuchProcess_isEmpty) {
    EXPECT_EQ(processName(0), "");
}

}  // namespace
}  // namespace vantrel::desktop
