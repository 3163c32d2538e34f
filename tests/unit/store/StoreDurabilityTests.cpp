#include <signal.h>
#include <unistd.h>

#include <array>
#include <ctime>
#include <random>

#include "ChildRun.hpp"
#include "StoreFixture.hpp"
#include "SystemCallFault.hpp"

namespace vantrel::desktop {
namespace {

class StoreDurabilityTest : public StoreTest {
  protected:
    /// The value of the key as the next launch reads it.
    std::int64_t storedNumber(std::string_view key) { return openStore()->integerForKey(key); }
};

TEST_F(StoreDurabilityTest, killedRightAfterAWrite_twoHundredTimes_losesNothing) {
    for (std::int64_t number = 1; number <= 200; ++number) {
        const int ending = runInChild(ChildUser::same, [&] {
            const auto store = openStore();
            if (store->integerForKey("number") == number - 1) {
                store->setObject(number, "number");
                ::raise(SIGKILL);
            }
        });
        ASSERT_EQ(ending, -SIGKILL) << "the previous write was lost";
    }
    EXPECT_EQ(storedNumber("number"), 200);
}

TEST_F(StoreDurabilityTest, killedBetweenLaunchesThatEndWell_losesNothing) {
    for (std::int64_t number = 1; number <= 20; ++number) {
        const int ending = runInChild(ChildUser::same, [&] {
            const auto store = openStore();
            store->setObject(number, "number");
            ::raise(SIGKILL);
        });
        ASSERT_EQ(ending, -SIGKILL);
        ASSERT_EQ(storedNumber("number"), number);
        ASSERT_FALSE(std::filesystem::exists(file_.string() + "-wal"));
    }
}

TEST_F(StoreDurabilityTest, killedDuringCheckpoints_losesNothingAndKeepsPairsTogether) {
    std::mt19937 random(20'240'229);
    std::int64_t lastNumber = 0;
    for (int round = 0; round < 40; ++round) {
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe(pipe.data()), 0);
        const int turns = static_cast<int>(random() % 100);
        const int ending = runInChild(ChildUser::same, [&] {
            StoreOptions options = quietOptions();
            options.checkpoints.longLog = 5;
            const auto store = openStore(options);
            for (int turn = 0;; ++turn) {
                ++lastNumber;
                store->setObjects({{"first", lastNumber}, {"second", lastNumber}});
                if (!store->hasUnstoredValues()) {
                    const ssize_t written = ::write(pipe[1], &lastNumber, sizeof lastNumber);
                    if (written != sizeof lastNumber) {
                        ::_exit(1);
                    }
                    if (turn >= turns) {
                        ::raise(SIGKILL);
                    }
                }
                serveLoop();
            }
        });
        ASSERT_EQ(ending, -SIGKILL);
        ::close(pipe[1]);
        while (::read(pipe[0], &lastNumber, sizeof lastNumber) == sizeof lastNumber) {
        }
        ::close(pipe[0]);
        const auto store = openStore();
        ASSERT_EQ(store->integerForKey("first"), lastNumber);
        ASSERT_EQ(store->integerForKey("second"), lastNumber);
    }
    EXPECT_TRUE(namesSetAside().empty());
}

TEST_F(StoreDurabilityTest, killedAtAnyMoment_theStoreHoldsTheStateBeforeOrAfterAWrite) {
    std::mt19937 random(7);
    for (int round = 0; round < 100; ++round) {
        const int ending = runInChild(ChildUser::same, [&] {
            StoreOptions options = quietOptions();
            options.checkpoints.longLog = 5;
            const auto store = openStore(options);
            // The kernel ends the process within a write, a checkpoint or the main loop, wherever it then is.
            const timespec lifetime{0, static_cast<long>(random() % 8'000'000)};
            sigevent event{};
            event.sigev_notify = SIGEV_SIGNAL;
            event.sigev_signo = SIGKILL;
            timer_t timer{};
            const itimerspec once{{0, 0}, {0, lifetime.tv_nsec + 1}};
            if (::timer_create(CLOCK_MONOTONIC, &event, &timer) != 0 ||
                ::timer_settime(timer, 0, &once, nullptr) != 0) {
                ::_exit(1);
            }
            for (std::int64_t number = 1;; ++number) {
                store->setObjects({{"first", number}, {"second", number}});
                serveLoop();
            }
        });
        random.discard(1);
        ASSERT_EQ(ending, -SIGKILL);
        const auto store = openStore();
        ASSERT_EQ(store->integerForKey("first"), store->integerForKey("second"));
    }
    EXPECT_TRUE(namesSetAside().empty());
}

TEST_F(StoreDurabilityTest, threeThousandWrites_eachIsStoredAtOnceAndMainThreadNeverSyncs) {
    makeStore();
    StoreOptions options;
    options.checkpoints.idle = std::chrono::hours(1);
    options.checkpoints.longLog = 200;
    const auto store = openStore(options);
    const WaitCounts before = waitCounts();
    for (std::int64_t number = 1; number <= 3000; ++number) {
        store->setObjects({{"first", number}, {"second", number}});
        ASSERT_FALSE(store->hasUnstoredValues()) << "a kill now would lose write " << number;
        serveLoop();
    }
    const WaitCounts after = waitCounts();
    EXPECT_EQ(after.mainThreadSyncs, before.mainThreadSyncs);
    EXPECT_EQ(after.mainThreadSleeps, before.mainThreadSleeps);
    EXPECT_GT(after.allSyncs, before.allSyncs) << "no checkpoint ran, so that nothing was tested";
    EXPECT_EQ(store->integerForKey("second"), 3000);
}

TEST_F(StoreDurabilityTest, firstWriteOfALaunch_doesNotWaitForTheDiskAndNothingIsArmedBefore) {
    makeStore();
    const WaitCounts before = waitCounts();
    const auto store = openStore(quietOptions());
    EXPECT_TRUE(store->isAtRest());
    store->setBool(true, "soundEnabled");
    EXPECT_FALSE(store->hasUnstoredValues());
    EXPECT_EQ(waitCounts().allSyncs, before.allSyncs);
}

TEST_F(StoreDurabilityTest, firstWriteOfALaunch_afterAKill_doesNotWaitForTheDisk) {
    EXPECT_EQ(runInChild(ChildUser::same,
                         [&] {
                             const auto store = openStore();
                             store->setBool(true, "soundEnabled");
                             ::raise(SIGKILL);
                         }),
              -SIGKILL);
    const WaitCounts before = waitCounts();
    const auto store = openStore(quietOptions());
    store->setBool(false, "soundEnabled");
    EXPECT_FALSE(store->hasUnstoredValues());
    EXPECT_EQ(waitCounts().allSyncs, before.allSyncs);
}

TEST_F(StoreDurabilityTest, idleStore_isCheckpointedOnceAndThenArmsNothing) {
    makeStore();
    StoreOptions options = quietOptions();
    options.checkpoints.idle = std::chrono::milliseconds(10);
    const auto store = openStore(options);
    const int syncsBefore = waitCounts().allSyncs;
    store->setObject(std::string("automatic"), "mode");
    EXPECT_FALSE(store->isAtRest());
    EXPECT_TRUE(loopUntil([&] { return store->isAtRest(); }));
    EXPECT_GT(waitCounts().allSyncs, syncsBefore);
    // The log was moved: the file alone holds the value. Read in another process, because closing a descriptor of the
    // file in this one would drop the store's locks.
    EXPECT_EQ(runInChild(ChildUser::same, [&] { EXPECT_NE(contentsOf(file_).find("automatic"), std::string::npos); }),
              0);
    const int syncsAtRest = waitCounts().allSyncs;
    store->setObject(std::string("manual"), "mode");
    EXPECT_EQ(waitCounts().allSyncs, syncsAtRest) << "the log was not begun after the checkpoint";
    EXPECT_LT(std::filesystem::file_size(file_.string() + "-wal"), 4U * 4096U) << "the log was not emptied";
}

TEST_F(StoreDurabilityTest, idleStore_tellsOnceThatItRestsAndAfterFurtherChangesAgain) {
    StoreOptions options;
    options.checkpoints.idle = std::chrono::milliseconds(50);  // after the look for the file
    const auto store = openStore(options);
    int rests = 0;
    store->setRestHandler([&] {
        EXPECT_TRUE(store->isAtRest());
        ++rests;
    });
    for (int expected = 1; expected <= 2; ++expected) {
        store->setObject(std::int64_t{expected}, "number");
        EXPECT_TRUE(loopUntil([&] { return rests == expected; }));
    }
}

TEST_F(StoreDurabilityTest, changesWithoutAPause_storeDoesNotTellThatItRests) {
    StoreOptions options;
    options.checkpoints.idle = std::chrono::hours(1);
    options.checkpoints.longLog = 100;
    const auto store = openStore(options);
    store->setRestHandler([] { FAIL() << "more changes are to be expected"; });
    std::int64_t number = 0;
    while (!store->isCheckpointing()) {
        store->setObject(++number, "number");
    }
    EXPECT_TRUE(loopUntil([&] { return !store->isCheckpointing(); }));
}

TEST_F(StoreDurabilityTest, manyWrites_logStaysShort) {
    StoreOptions options;
    options.checkpoints.idle = std::chrono::hours(1);
    options.checkpoints.longLog = 100;
    const auto store = openStore(options);
    const DefaultsValue value = DefaultsData{std::string(3000, 'x')};
    for (int number = 0; number < 50; ++number) {
        for (int write = 0; write < 100; ++write) {
            store->setObject(value, "rememberedPositions");
        }
        // A person's pause: a checkpoint that runs comes to its end.
        EXPECT_TRUE(loopUntil([&] { return !store->isCheckpointing(); }));
    }
    EXPECT_LT(std::filesystem::file_size(file_.string() + "-wal"), 400U * 4096U);
}

TEST_F(StoreDurabilityTest, aWriteInEachCheckpoint_logStaysShortAllTheSame) {
    constexpr int longLog = 100;
    StoreOptions options;
    options.checkpoints.idle = std::chrono::hours(1);
    options.checkpoints.longLog = longLog;
    options.checkpoints.longestLog = 3 * longLog;
    const auto store = openStore(options);
    std::int64_t number = 0;
    for (int round = 0; round < 10; ++round) {
        const int syncs = waitCounts().allSyncs;
        while (!store->isCheckpointing()) {
            store->setObject(++number, "number");
        }
        // Once it waits for the disk, the checkpoint has settled how much it moves.
        EXPECT_TRUE(loopUntil([&] { return waitCounts().allSyncs > syncs || !store->isCheckpointing(); }));
        store->setObject(++number, "number");
        EXPECT_TRUE(loopUntil([&] { return !store->isCheckpointing(); }));
    }
    EXPECT_LT(std::filesystem::file_size(file_.string() + "-wal"), 5U * longLog * 4096U);
    EXPECT_EQ(store->integerForKey("number"), number);
}

}  // namespace
}  // namespace vantrel::desktop
