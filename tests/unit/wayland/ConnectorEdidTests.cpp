#include <gtest/gtest.h>

#include <array>
#include <fstream>

#include "Vantrel/Backends/Common/DisplayIdentity.hpp"
#include "Vantrel/Backends/Common/MonitorLayout.hpp"
#include "Vantrel/Backends/Wayland/ConnectorEdid.hpp"
#include "Vantrel/Backends/Wayland/OutputLayout.hpp"
#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::wayland {
namespace {

/// The base block of an EDID (a DELL with a serial number), with the extension that the kernel adds to it.
std::string recordedEdid(std::uint8_t serial) {
    std::string bytes(256, '\0');
    constexpr std::array<unsigned char, 18> head{0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x10,
                                                 0xAC, 0x7B, 0xA0, 0x4C, 0x33, 0x32, 0x31, 0x05, 0x1E};
    std::copy(head.begin(), head.end(), bytes.begin());
    bytes[12] = static_cast<char>(serial);
    return bytes;
}

class ConnectorEdid : public testing::Test {
  protected:
    void plugIn(const std::string& entry, const std::string& edid) const {
        std::filesystem::create_directory(kernel.path() / entry);
        std::ofstream(kernel.path() / entry / "edid", std::ios::binary) << edid;
    }

    desk::TemporaryDirectory kernel{"drm"};
};

TEST_F(ConnectorEdid, display_isWhatX11MakesOfTheSameEdid) {
    const std::string edid = recordedEdid(0x4C);
    plugIn("card0-HDMI-A-1", edid);
    // An X server gives the property's first 128 bytes.
    const std::string onX11 = backend::edidIdentity({reinterpret_cast<const std::uint8_t*>(edid.data()), 128});
    ASSERT_FALSE(onX11.empty());
    EXPECT_EQ(edidIdentityOfConnector("HDMI-A-1", kernel.path()), onX11);

    const backend::Monitor monitor{.name = "HDMI-1",
                                   .isPrimary = true,
                                   .isAutomatic = true,
                                   .x = 0,
                                   .y = 0,
                                   .width = 1920,
                                   .height = 1080,
                                   .outputs = {{.connector = "HDMI-1", .edid = onX11}}};
    const OutputDescription output{.name = "HDMI-A-1",
                                   .x = 0,
                                   .y = 0,
                                   .width = 1920,
                                   .height = 1080,
                                   .transform = 0,
                                   .edid = edidIdentityOfConnector("HDMI-A-1", kernel.path())};
    EXPECT_EQ(layoutOfOutputs({output}).displays.at(0).id, backend::layoutOfMonitors({monitor}).displays.at(0).id);
}

TEST_F(ConnectorEdid, severalConnectors_eachHasItsOwn) {
    plugIn("card0-DP-1", recordedEdid(1));
    plugIn("card0-DP-11", recordedEdid(2));
    plugIn("card1-eDP-1", recordedEdid(3));
    EXPECT_EQ(edidIdentityOfConnector("DP-1", kernel.path()), "10AC:A07B:31323301:");
    EXPECT_EQ(edidIdentityOfConnector("DP-11", kernel.path()), "10AC:A07B:31323302:");
    EXPECT_EQ(edidIdentityOfConnector("eDP-1", kernel.path()), "10AC:A07B:31323303:");
}

TEST_F(ConnectorEdid, twoCards_theFirstWithADisplayCounts) {
    plugIn("card0-DP-1", "");
    plugIn("card1-DP-1", recordedEdid(5));
    EXPECT_EQ(edidIdentityOfConnector("DP-1", kernel.path()), "10AC:A07B:31323305:");
}

TEST_F(ConnectorEdid, nothingKnown_isEmpty) {
    plugIn("card0-DP-1", recordedEdid(1).substr(0, 100));
    EXPECT_EQ(edidIdentityOfConnector("DP-1", kernel.path()), "");
    EXPECT_EQ(edidIdentityOfConnector("HEADLESS-1", kernel.path()), "");
    EXPECT_EQ(edidIdentityOfConnector("../DP-1", kernel.path()), "");
    EXPECT_EQ(edidIdentityOfConnector("DP-1", kernel.path() / "none"), "");
}

}  // namespace
}  // namespace vantrel::wayland
