// Another program that holds the store's lock.
#include "StoreFaultFixture.hpp"
#include "SystemCallFault.hpp"

namespace vantrel::desktop {
namespace {

TEST_F(StoreFaultTest, anotherProgramHoldsTheLock_writesDoNotWaitAndAreStoredWhenItIsGone) {
    StoreOptions options = quietOptions();
    options.firstRetry = std::chrono::milliseconds(20);
    const auto store = openStore(options);
    Outsider outsider(file_);
    outsider.execute("BEGIN IMMEDIATE");
    const int sleepsBefore = waitCounts().mainThreadSleeps;
    writeTwoValues(*store);
    EXPECT_EQ(waitCounts().mainThreadSleeps, sleepsBefore);
    EXPECT_TRUE(store->hasUnstoredValues());
    EXPECT_EQ(store->stringForKey("mode"), "manual");
    outsider.execute("COMMIT");
    EXPECT_TRUE(loopUntil([&] { return !store->hasUnstoredValues(); }));
    EXPECT_EQ(storedRows(), bothWrites);
}

TEST_F(StoreFaultTest, closedWithUnstoredValues_storesThemAtTheEnd) {
    {
        const auto store = openStore();
        Outsider outsider(file_);
        outsider.execute("BEGIN IMMEDIATE");
        writeTwoValues(*store);
        EXPECT_TRUE(store->hasUnstoredValues());
        outsider.execute("COMMIT");
    }
    EXPECT_EQ(storedRows(), bothWrites);
}

}  // namespace
}  // namespace vantrel::desktop
