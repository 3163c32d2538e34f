#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "tests/desk/sound/SettingsManager.hpp"
#include "tests/desk/sound/SoundServer.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

/// A desk on which every jump is to be heard.
class PopTest : public testing::Test {
  protected:
    PopTest() : pop_(samplesOfWav(VANTREL_POP_FILE)) {
        desk_.defaults().writeInteger("soundEnabled", 1);
        // No hardware of this machine is to make a sound, whatever the library tries.
        desk_.environment().set("ALSA_CONFIG_PATH", "/dev/null");
    }

    void startServer() { server_ = std::make_unique<SoundServer>(desk_.environment(), desk_.home().path() / "sound"); }

    void startAgent() {
        agent_ = desk_.startAgent();
        desk_.pointer().moveTo(onMain);
    }

    /// Presses Hyper + D and waits until the pointer is there.
    void jump() {
        const MainPoint target = isOnMain_ ? centreOfSecond : onMain;
        isOnMain_ = !isOnMain_;
        desk_.keyboard().type(hyper(keys::d));
        ASSERT_TRUE(desk_.pointer().waitFor(target));
    }

    bool isHeard() {
        return waitUntil([&] { return likeness(server_->recording(), pop_) > 0.95; });
    }

    /// The processes that the agent started and that still run.
    [[nodiscard]] std::vector<pid_t> children() const {
        const std::string process = std::to_string(agent_->processId());
        std::ifstream list("/proc/" + process + "/task/" + process + "/children");
        std::vector<pid_t> result;
        for (pid_t child = 0; list >> child;) {
            result.push_back(child);
        }
        return result;
    }

    Desk desk_;
    std::vector<float> pop_;
    std::unique_ptr<SoundServer> server_;
    std::unique_ptr<AgentProcess> agent_;
    bool isOnMain_ = true;
};

TEST_F(PopTest, jump_soundOn_popIsHeard) {
    startServer();
    startAgent();
    EXPECT_TRUE(children().empty());
    jump();
    EXPECT_TRUE(isHeard());
}

// The library for sound cards tells at length what it did not find.
TEST_F(PopTest, jump_noServerAndNoSoundCard_tellsNothing) {
    desk_.environment().set("CANBERRA_DRIVER", "alsa");
    startAgent();
    jump();
    ASSERT_TRUE(waitUntil([this] { return !children().empty(); }));
    const auto helper = std::filesystem::path("/proc") / std::to_string(children().front()) / "exe";
    EXPECT_EQ(agent_->terminate().code, 0);
    // It plays what it was asked for, or tries to, before it follows the agent.
    EXPECT_TRUE(waitUntil([&helper] {
        std::error_code error;
        return std::filesystem::read_symlink(helper, error).empty();
    }));
    EXPECT_EQ(agent_->standardError(), "");
}

TEST_F(PopTest, jump_soundOff_isSilentAndStartsNothing) {
    startServer();
    desk_.defaults().writeInteger("soundEnabled", 0);
    startAgent();
    jump();
    const double recorded = server_->recordedSeconds();
    EXPECT_TRUE(waitUntil([&] { return server_->recordedSeconds() > recorded + 0.5; }));
    EXPECT_TRUE(children().empty());
    for (const float sample : server_->recording()) {
        ASSERT_EQ(sample, 0.0F);
    }
}

TEST_F(PopTest, jump_eventSoundsSwitchedOffOnTheDesktop_isSilentUntilTheyAreOn) {
    startServer();
    SettingsManager settings(desk_.connection());
    settings.publishEventSounds(false);
    startAgent();
    jump();
    const double recorded = server_->recordedSeconds();
    EXPECT_TRUE(waitUntil([&] { return server_->recordedSeconds() > recorded + 0.5; }));
    for (const float sample : server_->recording()) {
        ASSERT_EQ(sample, 0.0F);
    }
    settings.publishEventSounds(true);
    jump();
    EXPECT_TRUE(isHeard());
}

TEST_F(PopTest, jump_soundServerHangs_pointerMovesAndOneHelperWaits) {
    startServer();
    server_->stop();
    startAgent();
    for (int count = 0; count < 10; ++count) {
        jump();
        EXPECT_LE(children().size(), 1U);
    }
    server_->goOn();
    // The helper that was held, or the one after it, is heard again.
    EXPECT_TRUE(waitUntil([&] {
        jump();
        return likeness(server_->recording(), pop_) > 0.95;
    }));
}

TEST_F(PopTest, jump_soundServerEndsAndComesBack_popIsHeardAgain) {
    startServer();
    startAgent();
    jump();
    ASSERT_TRUE(isHeard());
    server_->end();
    jump();
    server_.reset();
    startServer();
    EXPECT_TRUE(waitUntil([&] {
        jump();
        return likeness(server_->recording(), pop_) > 0.95;
    }));
}

TEST_F(PopTest, jump_noSoundServer_pointerMoves) {
    startAgent();
    for (int count = 0; count < 10; ++count) {
        jump();
    }
    EXPECT_TRUE(agent_->isRunning());
    EXPECT_EQ(agent_->terminate(), ordinaryEnd);
}

TEST_F(PopTest, sound_aWhileLater_leavesNothingBehind) {
    startServer();
    startAgent();
    jump();
    // Before listening: where that takes long, the helper has had its time by the end of it.
    ASSERT_TRUE(waitUntil([&] { return children().size() == 1; }));
    ASSERT_TRUE(isHeard());
    EXPECT_TRUE(waitUntil([&] { return children().empty(); }, std::chrono::seconds(60)));
    EXPECT_TRUE(waitUntilAtRest(agent_->processId(), std::chrono::seconds(1), std::chrono::seconds(60)));
}

TEST_F(PopTest, agentEnds_helperGoesToo) {
    startServer();
    startAgent();
    jump();
    ASSERT_TRUE(waitUntil([&] { return children().size() == 1; }));
    const pid_t helper = children().front();
    agent_->kill();
    EXPECT_TRUE(waitUntil([&] { return !std::filesystem::exists("/proc/" + std::to_string(helper) + "/exe"); }));
}

}  // namespace
}  // namespace vantrel::desk
