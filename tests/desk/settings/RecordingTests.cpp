#include <gtest/gtest.h>

#include "tests/desk/settings/SettingsDesk.hpp"

namespace vantrel::desk {
namespace {

TEST(Recording, chord_typed_isAppliedAndShown) {
    SettingsDesk settings;
    settings.open();
    settings.saveScreenshot("open");
    settings.startRecording();
    settings.saveScreenshot("recording");
    settings.desk().keyboard().type({keys::control, keys::option, "SPCE"});
    EXPECT_TRUE(settings.turnUntil([&] { return settings.status() == "Ready. Use Ctrl + Option + Space."; }));
    EXPECT_EQ(settings.recorderTitle(), "Ctrl + Option + Space");
    EXPECT_FALSE(settings.statusIsRed());
    settings.saveScreenshot("recorded");
}

}  // namespace
}  // namespace vantrel::desk
