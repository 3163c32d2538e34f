// Which keys are modifiers, on the keyboards that people have.
#include <gtest/gtest.h>

#include "tests/desk/settings/RecordingFixture.hpp"
#include "tests/desk/support/ChildProcess.hpp"

namespace vantrel::desk {
namespace {

constexpr std::string_view altGr = "RALT", backslash = "BKSL", menu = "COMP";

class RecordingModifiers : public Recording {
  protected:
    void useMap(const std::string& layout, const std::string& option = {}) {
        setKeyboardMap(settings.desk().server().displayName(), layout, option);
    }

    void turnCapsLockIntoHyper() { runProgram({VANTREL_HYPER_SCRIPT}, settings.desk().environment()); }

    /// Holds the key by itself and expects that the recorder takes it for a modifier: it waits for a key, and says
    /// nothing.
    void expectAwaitsAKeyWhileHolding(std::string_view key) {
        const std::string before = settings.status();
        keyboard().hold({key});
        ASSERT_TRUE(titleBecomes("Press a key...")) << key << ": " << settings.recorderTitle();
        EXPECT_TRUE(settings.holds([&] { return settings.recorderTitle() == "Press a key..."; }));
        EXPECT_EQ(settings.status(), before);
        EXPECT_FALSE(settings.statusIsRed());
        keyboard().letGo();
    }
};

TEST_F(RecordingModifiers, capsLockAsHyper_held_awaitsAKey) {
    turnCapsLockIntoHyper();
    openAndRecord();
    expectAwaitsAKeyWhileHolding(keys::capsLock);
}

TEST_F(RecordingModifiers, capsLockAsHyperAndKey_typed_isTheChord) {
    turnCapsLockIntoHyper();
    openAndRecord();
    expectRecorded({keys::control, keys::m}, "Ctrl + M");
    settings.startRecording();
    keyboard().hold({keys::capsLock});
    EXPECT_TRUE(titleBecomes("Press a key..."));
    keyboard().letGo();
    keyboard().type({keys::capsLock, keys::d});
    EXPECT_TRUE(statusBecomes("Ready. With Raycast Hyper Key, use Caps Lock + D.")) << settings.status();
    EXPECT_FALSE(settings.statusIsRed());
    EXPECT_EQ(settings.recorderTitle(), "Hyper + D");
    EXPECT_TRUE(keyboardBecomesFree());
}

TEST_F(RecordingModifiers, capsLockAsHyper_twoLayouts_isAModifierInBoth) {
    useMap("us,de", "grp:alt_shift_toggle");
    turnCapsLockIntoHyper();
    openAndRecord();
    expectAwaitsAKeyWhileHolding(keys::capsLock);
    keyboard().type({keys::option, keys::shift});
    expectAwaitsAKeyWhileHolding(keys::capsLock);
}

TEST_F(RecordingModifiers, capsLockMadeHyperWhileRecording_held_awaitsAKey) {
    openAndRecord();
    turnCapsLockIntoHyper();
    expectAwaitsAKeyWhileHolding(keys::capsLock);
}

TEST_F(RecordingModifiers, altGr_layoutsThatHaveIt_awaitsAKey) {
    for (const char* const layout : {"de", "fr", "es", "pl", "gb"}) {
        SCOPED_TRACE(layout);
        useMap(layout);
        openAndRecord();
        expectAwaitsAKeyWhileHolding(altGr);
        settings.click(settings.recorder());
        EXPECT_TRUE(statusBecomes("Shortcut recording cancelled."));
    }
}

TEST_F(RecordingModifiers, altGr_asTheOnlyModifier_isNone) {
    useMap("de");
    openAndRecord();
    keyboard().type({altGr, keys::d});
    EXPECT_TRUE(statusBecomes("Use at least one modifier plus a regular key."));
    expectRecorded({keys::control, keys::space}, "Ctrl + Space");
}

TEST_F(RecordingModifiers, modifiersWithoutAPlaceOfTheirOwn_held_awaitAKey) {
    useMap("de", "lv3:bksl_switch");
    openAndRecord();
    expectAwaitsAKeyWhileHolding(backslash);
    useMap("de", "lv3:menu_switch");
    expectAwaitsAKeyWhileHolding(menu);
    useMap("de");
    expectRecorded({keys::control, backslash}, "Ctrl + \\");
}

TEST_F(RecordingModifiers, keyThatStandsWhereAModifierDoes_typed_isNoKey) {
    useMap("us", "caps:backspace");
    openAndRecord();
    expectAwaitsAKeyWhileHolding(keys::capsLock);
}

TEST_F(RecordingModifiers, escapeOnCapsLock_typed_cancels) {
    useMap("us", "caps:escape");
    openAndRecord();
    keyboard().type({keys::capsLock});
    EXPECT_TRUE(statusBecomes("Shortcut recording cancelled."));
}

}  // namespace
}  // namespace vantrel::desk
