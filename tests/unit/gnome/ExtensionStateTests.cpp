#include "Vantrel/Backends/Gnome/ExtensionState.hpp"

#include <gtest/gtest.h>

#include "Vantrel/Handles/GLibHandles.hpp"

namespace vantrel::gnome {
namespace {

std::string reason(const char* information, bool isInstalled = true, const std::string& shellVersion = "48.7") {
    const GVariantPointer answer(g_variant_parse(G_VARIANT_TYPE("(a{sv})"), information, nullptr, nullptr, nullptr));
    return whyExtensionIsMissing(answer.get(), isInstalled, shellVersion);
}

TEST(ExtensionState, whyExtensionIsMissing_off_namesTheCommand) {
    EXPECT_EQ(reason("({'state': <2.0>},)"),
              "Vantrel's extension is off in GNOME: gnome-extensions enable vantrel@vantrel.org");
    EXPECT_EQ(reason("({'state': <6.0>},)"),
              "Vantrel's extension is off in GNOME: gnome-extensions enable vantrel@vantrel.org");
}

TEST(ExtensionState, whyExtensionIsMissing_unknownToTheShell_wantsANewLogin) {
    EXPECT_EQ(reason("({},)"), "GNOME does not know Vantrel's extension yet: log out and in once");
    EXPECT_EQ(whyExtensionIsMissing(nullptr, true, ""),
              "GNOME does not know Vantrel's extension yet: log out and in once");
}

TEST(ExtensionState, whyExtensionIsMissing_notInstalled_namesThePackage) {
    EXPECT_NE(reason("({},)", false).find("install the package vantrel-gnome-shell"), std::string::npos);
}

TEST(ExtensionState, whyExtensionIsMissing_failed_tellsTheErrorOnOneLine) {
    EXPECT_EQ(reason("({'state': <3.0>, 'error': <'first\\nsecond'>},)"),
              "Vantrel's extension failed in GNOME: first second");
}

TEST(ExtensionState, whyExtensionIsMissing_shellBefore45_namesTheOtherSession) {
    EXPECT_NE(reason("({},)", false, "43.9").find("choose GNOME on Xorg"), std::string::npos);
    EXPECT_EQ(reason("({},)", false, "45.beta").find("Xorg"), std::string::npos);
    EXPECT_EQ(reason("({},)", false, "").find("Xorg"), std::string::npos);
}

TEST(ExtensionState, whyExtensionIsMissing_outOfDate_saysSo) {
    EXPECT_EQ(reason("({'state': <4.0>},)"), "Vantrel's extension was not made for this version of GNOME");
}

}  // namespace
}  // namespace vantrel::gnome
