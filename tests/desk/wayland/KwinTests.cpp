// What Plasma's compositor adds: hot keys by its global shortcuts, which it stores.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/desk/status/BusClient.hpp"
#include "tests/desk/support/ProgramCopy.hpp"
#include "tests/desk/wayland/support/KwinDesk.hpp"

namespace vantrel::desk {
namespace {

class KwinKeys : public testing::Test {
  protected:
    void start() {
        agent = desk.startAgent();
        desk.person().moveTo(onMain);
    }

    /// The file in which the person's global shortcuts are.
    std::string storedShortcuts() {
        std::ostringstream text;
        text << std::ifstream(desk.compositor().runtimeDirectory() / ".config" / "kglobalshortcutsrc").rdbuf();
        return text.str();
    }

    /// The same when KWin has written all of its own.
    std::string storedAtRest() {
        std::string text;
        waitUntil([&] {
            text = storedShortcuts();
            return !text.empty() && !waitUntil([&] { return storedShortcuts() != text; }, std::chrono::seconds(1));
        });
        return text;
    }

    bool isStored() { return storedShortcuts().find("[vantrel]") != std::string::npos; }

    /// Whether nothing of ours is stored, and all that was before still is. A busy KWin may have stored more meanwhile.
    bool isStoredAsItWas(const std::string& before) {
        std::istringstream lines(before);
        const std::string now = "\n" + storedShortcuts();
        bool hasAll = !isStored();
        for (std::string line; std::getline(lines, line);) {
            hasAll = hasAll && now.find("\n" + line + "\n") != std::string::npos;
        }
        return hasAll;
    }

    KwinDesk desk;
    std::unique_ptr<AgentProcess> agent;
};

TEST_F(KwinKeys, end_leavesTheStoredShortcutsAsTheyWere) {
    const std::string before = storedAtRest();
    start();
    ASSERT_TRUE(waitUntil([this] { return isStored(); }));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_TRUE(waitUntil([&] { return isStoredAsItWas(before); }));
}

TEST_F(KwinKeys, killed_theNextAgentHasThemAndLeavesNothing) {
    const std::string before = storedAtRest();
    start();
    agent->kill();
    start();
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_TRUE(waitUntil([&] { return isStoredAsItWas(before); }));
}

TEST_F(KwinKeys, chordOfAnotherProgram_staysIts) {
    BusClient other(desk.kwin().busAddress());
    const auto call = [&](const char* method, const char* arguments) {
        return other.call("org.kde.kglobalaccel", "/kglobalaccel", "org.kde.KGlobalAccel", method,
                          g_variant_new_parsed(arguments));
    };
    // Hyper + D as Qt numbers it.
    ASSERT_TRUE(call("doRegister", "(['other', 'action', 'Other', 'Action'],)"));
    ASSERT_TRUE(
        call("setShortcutKeys", "(['other', 'action', 'Other', 'Action'], [([503316548, 0, 0, 0],)], uint32 6)"));
    start();
    desk.person().type(hyper(keys::d));
    EXPECT_TRUE(desk.person().staysAt(onMain));
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::rightArrow), centreOfSecond)) << "the others are ours";
    EXPECT_EQ(agent->standardError(), "vantrel: the keys of a hot key belong to \"Action\" of Other\n");
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_TRUE(waitUntil([&] { return storedShortcuts().find("action=Meta+Ctrl+Alt+Shift+D") != std::string::npos; }));
}

TEST(KwinLayouts, russian_aloneAndActive_jump) {
    for (const char* layouts : {"ru", "us,ru"}) {
        KwinOptions options = KwinDesk::twoDisplays();
        options.keyboardLayouts = layouts;
        KwinDesk desk(options);
        const auto agent = desk.startAgent();
        desk.person().moveTo(onMain);
        EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond)) << layouts;
        if (layouts != std::string_view("ru")) {
            desk.kwin().chooseLayout(1);
        }
        EXPECT_TRUE(desk.jump(hyper(keys::d), onMain)) << layouts;
    }
}

TEST(KwinEnd, comesBack_soDoTheHotKeysAndNothingIsLost) {
    KwinDesk desk;
    const auto agent = desk.startAgent();
    desk.person().moveTo({.x = 100, .y = 200});
    ASSERT_TRUE(desk.savePoint());
    const auto savedBefore = desk.defaults().read("savedPoints");
    for (int round = 0; round < 2; ++round) {
        desk.kwin().restart();
        desk.seatPerson();
        desk.person().moveTo(onMain);
        ASSERT_TRUE(waitUntil([&] { return desk.isServed(); }));
        EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    }
    EXPECT_EQ(desk.defaults().read("savedPoints"), savedBefore);
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(agent->standardError(), "");
}

TEST(KwinUpgrade, programReplaced_theNewOneMayMoveThePointer) {
    KwinDesk desk;
    const ProgramCopy copy;
    desk.wrapAgent(copy.wrapper());
    desk.kwin().allow(copy.path());
    std::unique_ptr<AgentProcess> agent;
    // KWin learns of the desktop file a while later.
    ASSERT_TRUE(waitUntil([&] {
        agent = desk.startProgram();
        return waitUntil([&] { return desk.isServed() || !agent->isRunning(); }) && agent->isRunning();
    }));
    desk.person().moveTo(onMain);
    EXPECT_TRUE(desk.jump(hyper(keys::d), centreOfSecond));
    copy.replace();
    ASSERT_TRUE(waitUntil([&] { return copy.isRunBy(agent->processId()) && desk.isServed(); }));
    EXPECT_TRUE(desk.jump(hyper(keys::d), onMain));
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(agent->standardError(), "");
}

TEST(KwinEdges, jumpFromEndToEndOfARow_isNotHeldUpInBetween) {
    const KwinOptions options{
        .outputs = {{.mode = "480x360", .scale = "2"},
                    {.mode = "480x360", .x = -144, .y = 136, .scale = "2.5", .transform = "flipped-90"},
                    {.mode = "480x360", .x = 240, .y = -280, .transform = "270"}}};
    KwinDesk desk(options);
    const auto agent = desk.startAgent();
    desk.person().moveTo({.x = 306, .y = -66});
    EXPECT_TRUE(desk.jump(hyper(keys::d), {.x = -72, .y = 232})) << *desk.person().pointer();
    EXPECT_TRUE(desk.jump(controlOptionCommand(keys::leftArrow), {.x = 306, .y = -66})) << *desk.person().pointer();
}

TEST(KwinPermission, notGiven_oneLineSaysWhatIsMissing) {
    KwinOptions options = KwinDesk::twoDisplays();
    options.allowsAgent = false;
    KwinDesk desk(options);
    if (!KwinProcess::checksPermissions()) {
        GTEST_SKIP() << "KWin cannot see which program asks here";
    }
    const auto agent = desk.startProgram();
    EXPECT_EQ(agent->waitForExit(), (ExitStatus{.code = 1, .signal = std::nullopt}));
    EXPECT_NE(agent->standardError().find("X-KDE-Wayland-Interfaces=org_kde_kwin_fake_input"), std::string::npos);
}

}  // namespace
}  // namespace vantrel::desk
