// A store whose file is removed or replaced while the agent has it open.
#include "StoreFaultFixture.hpp"

namespace vantrel::desktop {
namespace {

class StoreFileRemovedTest : public StoreFaultTest {
  protected:
    StoreFileRemovedTest() {
        makeStore();
        store = openStore();
        EXPECT_EQ(store->stringForKey("mode"), "manual");
    }

    void removeFile() {
        for (const char* suffix : {"", "-wal", "-shm"}) {
            std::filesystem::remove(file_.string() + suffix);
        }
    }

    /// A moment after a change the store looks whether its file is still in its place.
    void waitForTheLook() const {
        EXPECT_TRUE(store->looksForFileSoon());
        EXPECT_TRUE(loopUntil([&] { return !store->looksForFileSoon(); }));
    }

    std::unique_ptr<SQLiteUserDefaults> store;
};

TEST_F(StoreFileRemovedTest, nextChange_makesANewFileWithItAlone) {
    store->setObject(std::string("automatic"), "mode");
    waitForTheLook();
    removeFile();
    store->setBool(true, "soundEnabled");
    waitForTheLook();
    EXPECT_FALSE(store->hasUnstoredValues());
    EXPECT_EQ(storedRows(), std::vector<std::string>{"soundEnabled|1"});
    EXPECT_EQ(modeOf(file_), 0600U);
}

TEST_F(StoreFileRemovedTest, changesInQuickSuccession_areAllInTheNewFile) {
    removeFile();
    store->setBool(true, "soundEnabled");
    store->setObject(std::string("automatic"), "mode");
    waitForTheLook();
    EXPECT_EQ(storedRows(), (std::vector<std::string>{"mode|automatic", "soundEnabled|1"}));
}

TEST_F(StoreFileRemovedTest, endRightAfterAChange_theNewFileHasIt) {
    removeFile();
    store->setBool(true, "soundEnabled");
    store.reset();
    EXPECT_EQ(storedRows(), std::vector<std::string>{"soundEnabled|1"});
}

TEST_F(StoreFileRemovedTest, withItsDirectory_bothAreMadeAnew) {
    std::filesystem::remove_all(file_.parent_path());
    store->setBool(true, "soundEnabled");
    waitForTheLook();
    EXPECT_EQ(storedRows(), std::vector<std::string>{"soundEnabled|1"});
    EXPECT_EQ(modeOf(file_.parent_path()), 0700U);
}

TEST_F(StoreFileRemovedTest, anotherPutInItsPlace_getsTheNextChangeAndKeepsItsOwn) {
    removeFile();
    const std::filesystem::path other = directory_ / "other";
    writeContents(other, "");
    Outsider(other).execute("CREATE TABLE defaults(key TEXT PRIMARY KEY, value ANY NOT NULL) STRICT, WITHOUT ROWID");
    Outsider(other).execute("INSERT INTO defaults VALUES('animation', 'none')");
    std::filesystem::rename(other, file_);
    store->setBool(true, "soundEnabled");
    waitForTheLook();
    EXPECT_EQ(storedRows(), (std::vector<std::string>{"animation|none", "soundEnabled|1"}));
}

}  // namespace
}  // namespace vantrel::desktop
