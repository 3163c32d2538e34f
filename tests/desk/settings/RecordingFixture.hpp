#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/desk/settings/SettingsDesk.hpp"
#include "tests/desk/settings/WindowManagerProbe.hpp"

namespace vantrel::desk {

/// A person who records shortcuts in the window.
class Recording : public testing::Test {
  protected:
    Keyboard& keyboard() { return settings.desk().keyboard(); }

    void openAndRecord() {
        settings.open();
        settings.startRecording();
    }

    bool statusBecomes(const std::string& text) {
        return settings.turnUntil([&] { return settings.status() == text; });
    }

    bool titleBecomes(const std::string& text) {
        return settings.turnUntil([&] { return settings.recorderTitle() == text; });
    }

    bool keyboardBecomesFree() {
        return settings.turnUntil([&] { return keyboardIsFree(settings.desk().connection()); });
    }

    /// Types the chord and waits until its shortcut is in force.
    void expectRecorded(const Chord& chord, const std::string& shortcut) {
        keyboard().type(chord);
        EXPECT_TRUE(statusBecomes("Ready. Use " + shortcut + ".")) << settings.status();
        EXPECT_EQ(settings.recorderTitle(), shortcut);
        EXPECT_FALSE(settings.statusIsRed());
    }

    SettingsDesk settings;
};

}  // namespace vantrel::desk
