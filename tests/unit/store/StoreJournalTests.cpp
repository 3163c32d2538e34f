#include <signal.h>

#include "ChildRun.hpp"
#include "StoreFixture.hpp"
#include "SystemCallFault.hpp"

namespace vantrel::desktop {
namespace {

/// File systems on which a write-ahead log cannot work: the promises are the same.
class StoreJournalTest : public StoreTest {
  protected:
    static StoreOptions withoutSharedMemory() {
        StoreOptions options = quietOptions();
        options.vfs = "unix-none";
        return options;
    }

    /// Whether the file's own header says that a write-ahead log goes with it.
    bool isMarkedForLog() { return contentsOf(file_).at(18) == 2; }

    /// Launches, writes and dies many times over, with the options.
    void expectNothingLost(const StoreOptions& options) {
        for (std::int64_t number = 1; number <= 20; ++number) {
            const int ending = runInChild(ChildUser::same, [&] {
                const auto store = openStore(options);
                if (store->integerForKey("second") == number - 1) {
                    store->setObjects({{"first", number}, {"second", number}});
                    ::raise(SIGKILL);
                }
            });
            ASSERT_EQ(ending, -SIGKILL) << "the previous write was lost";
        }
        EXPECT_EQ(openStore(options)->integerForKey("first"), 20);
    }
};

TEST_F(StoreJournalTest, noSharedMemory_anotherJournalServes) {
    testing::internal::CaptureStderr();
    expectNothingLost(withoutSharedMemory());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(Outsider(file_).text("PRAGMA journal_mode"), "delete");
}

TEST_F(StoreJournalTest, noSharedMemory_storeWithLogFromElsewhere_isRead) {
    // Killed, so that the log holds the value.
    EXPECT_EQ(runInChild(ChildUser::same,
                         [&] {
                             const auto store = openStore();
                             store->setObject(std::string("manual"), "mode");
                             ::raise(SIGKILL);
                         }),
              -SIGKILL);
    const auto store = openStore(withoutSharedMemory());
    EXPECT_EQ(store->stringForKey("mode"), "manual");
    store->setBool(true, "soundEnabled");
    EXPECT_FALSE(store->hasUnstoredValues());
    EXPECT_EQ(Outsider(file_).rows("SELECT key, value FROM defaults").size(), 2U);
}

TEST_F(StoreJournalTest, mappingFails_anotherJournalServes) {
    makeStore();
    testing::internal::CaptureStderr();
    {
        const SystemCallFault fault = SystemCallFault::noSharedMemory();
        const auto store = openStore();
        EXPECT_EQ(store->stringForKey("mode"), "manual");
        store->setObject(std::string("automatic"), "mode");
        EXPECT_FALSE(store->hasUnstoredValues());
        // Nobody is locked out.
        EXPECT_EQ(Outsider(file_).text("SELECT value FROM defaults WHERE key = 'mode'"), "automatic");
        EXPECT_EQ(Outsider(file_).execute("UPDATE defaults SET value = 'x' WHERE key = 'mode'"), SQLITE_OK);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(isMarkedForLog());
    // Where it works again, the log serves again.
    const auto store = openStore();
    EXPECT_EQ(store->stringForKey("mode"), "x");
    EXPECT_EQ(Outsider(file_).text("PRAGMA journal_mode"), "wal");
}

TEST_F(StoreJournalTest, noLocks_storeWorks) {
    makeStore();
    testing::internal::CaptureStderr();
    {
        const SystemCallFault fault = SystemCallFault::noLocks();
        const auto store = openStore();
        EXPECT_EQ(store->stringForKey("mode"), "manual");
        store->setObject(std::string("automatic"), "mode");
        EXPECT_FALSE(store->hasUnstoredValues());
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(isMarkedForLog());
    EXPECT_EQ(openStore()->stringForKey("mode"), "automatic");
    EXPECT_TRUE(isMarkedForLog());
}

}  // namespace
}  // namespace vantrel::desktop
