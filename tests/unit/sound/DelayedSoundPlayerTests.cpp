#include "Vantrel/Desktop/Sound/DelayedSoundPlayer.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "tests/fakes/FakeMainQueue.hpp"
#include "tests/fakes/FakeSoundPlayer.hpp"

namespace vantrel::desktop {
namespace {

class DelayedSoundPlayerTest : public testing::Test {
  protected:
    [[nodiscard]] fake::Journal played() const { return fake::entriesOf(journal_, {"play"}); }

    fake::Journal journal_;
    fake::FakeMainQueue queue_{journal_};
    fake::FakeSoundPlayer sounds_{journal_};
    std::optional<DelayedSoundPlayer> player_{std::in_place, sounds_, queue_};
};

TEST_F(DelayedSoundPlayerTest, play_beforeTheDelay_isSilent) {
    player_->play("Pop");
    queue_.advance(DelayedSoundPlayer::delay / 2);
    EXPECT_TRUE(played().empty());
}

TEST_F(DelayedSoundPlayerTest, play_afterTheDelay_isPlayedOnce) {
    player_->play("Pop");
    queue_.advance(DelayedSoundPlayer::delay * 10);
    EXPECT_EQ(played(), fake::Journal{"play(Pop)"});
}

TEST_F(DelayedSoundPlayerTest, play_twiceWithinTheDelay_isPlayedOnce) {
    player_->play("Pop");
    queue_.advance(DelayedSoundPlayer::delay / 2);
    player_->play("dropped");
    queue_.advance(DelayedSoundPlayer::delay * 10);
    EXPECT_EQ(played(), fake::Journal{"play(Pop)"});
}

TEST_F(DelayedSoundPlayerTest, play_afterASound_isPlayedToo) {
    for (const char* name : {"first", "second"}) {
        player_->play(name);
        queue_.advance(DelayedSoundPlayer::delay);
    }
    EXPECT_EQ(played(), (fake::Journal{"play(first)", "play(second)"}));
}

TEST_F(DelayedSoundPlayerTest, end_withASoundToCome_isSilent) {
    player_->play("Pop");
    player_.reset();
    queue_.advance(DelayedSoundPlayer::delay * 10);
    EXPECT_TRUE(played().empty());
}

}  // namespace
}  // namespace vantrel::desktop
