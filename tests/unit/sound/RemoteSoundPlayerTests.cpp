#include "Vantrel/Desktop/Sound/RemoteSoundPlayer.hpp"

#include <glib.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "Vantrel/Desktop/Helpers/HelperProgram.hpp"

namespace vantrel::desktop {
namespace {

/// Runs in a directory of its own, in which the fake helper leaves its traces.
class RemoteSoundPlayerTest : public testing::Test {
  protected:
    RemoteSoundPlayerTest() : oldDirectory_(std::filesystem::current_path()) {
        std::string name = (std::filesystem::temp_directory_path() / "vantrel-sound-XXXXXX").string();
        EXPECT_NE(::mkdtemp(name.data()), nullptr);
        directory_ = name;
        std::filesystem::current_path(directory_);
    }
    ~RemoteSoundPlayerTest() override {
        std::filesystem::current_path(oldDirectory_);
        // A helper may be writing into it still.
        EXPECT_TRUE(waitUntil([this] {
            std::error_code notEmpty;
            std::filesystem::remove_all(directory_, notEmpty);
            return !notEmpty;
        }));
    }

    static Channel startFake() { return startHelper(VANTREL_FAKE_SOUND_HELPER); }

    static std::vector<std::string> linesOf(const char* file) {
        std::ifstream stream(file);
        std::vector<std::string> lines;
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    static bool waitUntil(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!condition() && std::chrono::steady_clock::now() < end) {
            while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return condition();
    }

    static bool waitForLines(const char* file, std::size_t count) {
        return waitUntil([=] { return linesOf(file).size() >= count; });
    }

    std::filesystem::path oldDirectory_;
    std::filesystem::path directory_;
    RemoteSoundPlayer player_{startFake};
};

TEST_F(RemoteSoundPlayerTest, play_firstSound_startsTheHelperWithIt) {
    player_.play("Pop");
    ASSERT_TRUE(waitForLines("played", 1));
    EXPECT_EQ(linesOf("played"), std::vector<std::string>{"Pop"});
}

/// A player that has no helper and counts how often it would start one.
class SoundDelayTest : public RemoteSoundPlayerTest {
  protected:
    int starts_ = 0;
    std::optional<RemoteSoundPlayer> counted_{std::in_place, [this] {
                                                  ++starts_;
                                                  return Channel();
                                              }};
};

TEST_F(SoundDelayTest, play_beforeTheDelay_isSilent) {
    counted_->play("Pop");
    EXPECT_EQ(starts_, 0);
    EXPECT_TRUE(waitUntil([this] { return starts_ == 1; }));
}

TEST_F(RemoteSoundPlayerTest, play_twiceWithinTheDelay_isPlayedOnce) {
    player_.play("Pop");
    player_.play("dropped");
    ASSERT_TRUE(waitForLines("answered", 1));
    ASSERT_TRUE(waitUntil([this] {
        if (linesOf("played").size() < 2) {
            player_.play("next");
        }
        return linesOf("answered").size() >= 2;
    }));
    EXPECT_EQ(linesOf("played"), (std::vector<std::string>{"Pop", "next"}));
}

TEST_F(SoundDelayTest, end_withASoundToCome_isSilent) {
    counted_->play("Pop");
    counted_.reset();
    // Due after the sound would have been.
    bool isLater = false;
    const auto later = LoopSource::after(std::chrono::milliseconds(30), [&isLater] { isLater = true; });
    ASSERT_TRUE(waitUntil([&isLater] { return isLater; }));
    EXPECT_EQ(starts_, 0);
}

TEST_F(RemoteSoundPlayerTest, play_afterAnswers_sendsEachSoundToTheSameHelper) {
    for (std::size_t count = 1; count <= 5; ++count) {
        ASSERT_TRUE(waitUntil([&] {
            // Dropped until the last one was answered; and what was played stands in the file before its answer.
            if (linesOf("played").size() < count) {
                player_.play("Pop" + std::to_string(count));
            }
            return linesOf("played").size() == count;
        }));
    }
    EXPECT_EQ(linesOf("played"), (std::vector<std::string>{"Pop1", "Pop2", "Pop3", "Pop4", "Pop5"}));
    EXPECT_FALSE(std::filesystem::exists("gone"));
}

TEST_F(RemoteSoundPlayerTest, play_whileTheLastIsStuck_isDropped) {
    std::ofstream("stuck").close();
    player_.play("first");
    ASSERT_TRUE(waitForLines("played", 1));
    for (int count = 0; count < 10'000; ++count) {
        player_.play("dropped");
    }
    std::filesystem::remove("stuck");
    ASSERT_TRUE(waitUntil([&] {
        player_.play("second");
        return linesOf("played").size() >= 2;
    }));
    EXPECT_EQ(linesOf("played").at(1), "second");
}

TEST_F(RemoteSoundPlayerTest, play_afterTheHelperEnded_startsAnother) {
    std::ofstream("once").close();
    player_.play("first");
    ASSERT_TRUE(waitForLines("played", 1));
    // The first one's end may not have come through yet; each sound that is not lost to it reaches a helper.
    ASSERT_TRUE(waitUntil([&] {
        player_.play("later");
        return linesOf("played").size() >= 3;
    }));
}

TEST_F(RemoteSoundPlayerTest, play_helperKilledWhileStuck_startsAnother) {
    std::ofstream("stuck").close();
    player_.play("first");
    ASSERT_TRUE(waitForLines("played", 1));
    std::ofstream("once").close();
    std::filesystem::remove("stuck");
    ASSERT_TRUE(waitUntil([&] {
        player_.play("later");
        return linesOf("played").size() >= 2;
    }));
}

TEST_F(RemoteSoundPlayerTest, play_withoutHelper_isSilence) {
    RemoteSoundPlayer player([this] { return startHelper(directory_ / "no-such-program"); });
    player.play("Pop");
    player.play("Pop");
    EXPECT_FALSE(std::filesystem::exists("played"));
}

TEST_F(RemoteSoundPlayerTest, destroyed_helperIsToldAndGoes) {
    {
        RemoteSoundPlayer player{startFake};
        player.play("Pop");
        ASSERT_TRUE(waitForLines("answered", 1));
    }
    EXPECT_TRUE(waitForLines("gone", 1));
}

TEST_F(RemoteSoundPlayerTest, helperEnds_leavesNoProcessBehind) {
    {
        RemoteSoundPlayer player{startFake};
        player.play("Pop");
        ASSERT_TRUE(waitForLines("answered", 1));
    }
    ASSERT_TRUE(waitForLines("gone", 1));
    const std::filesystem::path process = "/proc/" + linesOf("gone").front();
    // As long as nobody has taken note of its end, the kernel keeps its entry.
    EXPECT_TRUE(waitUntil([&] { return !std::filesystem::exists(process); }));
}

}  // namespace
}  // namespace vantrel::desktop
