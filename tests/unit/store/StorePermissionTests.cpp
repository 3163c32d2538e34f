// Who may read and write the store, and what is done where the agent may not.
#include <sys/stat.h>
#include <unistd.h>

#include "StoreFaultFixture.hpp"

namespace vantrel::desktop {
namespace {

TEST_F(StoreFaultTest, open_newStore_isForItsOwnerOnly) {
    const mode_t oldMask = ::umask(0);
    const auto store = openStore();
    store->setBool(true, "soundEnabled");
    EXPECT_EQ(modeOf(file_.parent_path()), 0700U);
    EXPECT_EQ(modeOf(file_), 0600U);
    EXPECT_EQ(modeOf(file_.string() + "-wal"), 0600U);
    EXPECT_EQ(modeOf(file_.string() + "-shm"), 0600U);
    ::umask(oldMask);
}

TEST_F(StoreFaultTest, open_existingStoreThatOthersMayRead_tightensTheFileAndNotTheDirectory) {
    makeStore();
    ::chmod(file_.c_str(), 0664);
    ::chmod(file_.parent_path().c_str(), 0755);
    const auto store = openStore();
    EXPECT_EQ(modeOf(file_), 0600U);
    EXPECT_EQ(modeOf(file_.parent_path()), 0755U);
}

TEST_F(StoreFaultTest, open_missingParents_areMadeForTheOwnerOnly) {
    file_ = directory_ / "a" / "b" / "vantrel" / "defaults.sqlite3";
    const auto store = openStore();
    EXPECT_EQ(modeOf(directory_ / "a"), 0700U);
    EXPECT_EQ(modeOf(directory_ / "a" / "b"), 0700U);
}

TEST_F(StoreFaultTest, readOnlyFile_isReadAndChangesAreKept) {
    asUser([this] {
        makeStore();
        ::chmod(file_.c_str(), 0400);
        std::unique_ptr<SQLiteUserDefaults> store;
        const std::string told = toldBy([&] {
            store = openStore();
            EXPECT_EQ(store->stringForKey("mode"), "manual");
            EXPECT_EQ(store->dataForKey("savedPoints"), "[]");
            store->setObject(std::string("automatic"), "mode");
            store->setBool(true, "soundEnabled");
            EXPECT_EQ(store->stringForKey("mode"), "automatic");
            EXPECT_TRUE(store->hasUnstoredValues());
        });
        EXPECT_EQ(lineCount(told), 1U) << told;
        EXPECT_EQ(Outsider(file_).text("SELECT value FROM defaults WHERE key = 'mode'"), "manual");
        EXPECT_EQ(modeOf(file_), 0400U);

        ::chmod(file_.c_str(), 0600);
        store->setObject(std::string("glide"), "animation");
        EXPECT_FALSE(store->hasUnstoredValues());
        const std::vector<std::string> expected{"animation|glide", "mode|automatic", "soundEnabled|1"};
        EXPECT_EQ(
            Outsider(file_).rows(
                "SELECT key, value FROM defaults WHERE key IN ('animation', 'mode', 'soundEnabled') ORDER BY key"),
            expected);
    });
}

TEST_F(StoreFaultTest, readOnlyFile_nothingIsLaidBesideIt) {
    // A log of ours beside the file of somebody else would keep its owner from writing it.
    asUser([this] {
        makeStore();
        ::chmod(file_.c_str(), 0400);
        toldBy([&] {
            const auto store = openStore();
            EXPECT_EQ(store->stringForKey("mode"), "manual");
            store->setObject(std::string("automatic"), "mode");
            for (const char* suffix : {"-wal", "-shm", "-journal"}) {
                EXPECT_FALSE(std::filesystem::exists(file_.string() + suffix)) << suffix;
            }
        });
    });
}

TEST_F(StoreFaultTest, readOnlyFileWithALog_logIsReadToo) {
    asUser([this] {
        makeStore();
        const int ending = runInChild(ChildUser::same,
                                      [this] { openStore().release()->setObject(std::string("glide"), "animation"); });
        EXPECT_EQ(ending, 0);
        ASSERT_TRUE(std::filesystem::exists(file_.string() + "-wal"));
        ::chmod(file_.c_str(), 0400);
        toldBy([&] { EXPECT_EQ(openStore()->stringForKey("animation"), "glide"); });
    });
}

TEST_F(StoreFaultTest, readOnlyDirectory_isReadAndChangesAreKept) {
    asUser([this] {
        makeStore();
        ::chmod(file_.c_str(), 0400);
        ::chmod(file_.parent_path().c_str(), 0500);
        std::unique_ptr<SQLiteUserDefaults> store;
        const std::string told = toldBy([&] {
            store = openStore();
            EXPECT_EQ(store->stringForKey("mode"), "manual");
            EXPECT_EQ(store->dataForKey("savedPoints"), "[]");
            store->setObject(std::string("automatic"), "mode");
            store->setBool(true, "soundEnabled");
            EXPECT_TRUE(store->hasUnstoredValues());
        });
        EXPECT_EQ(lineCount(told), 1U) << told;
        ::chmod(file_.parent_path().c_str(), 0700);
        ::chmod(file_.c_str(), 0600);
        store->setObject(std::string("glide"), "animation");
        EXPECT_FALSE(store->hasUnstoredValues());
        EXPECT_EQ(Outsider(file_).text("SELECT value FROM defaults WHERE key = 'mode'"), "automatic");
    });
}

TEST_F(StoreFaultTest, directoryThatCannotBeMade_changesAreKept) {
    asUser([this] {
        ::chmod(directory_.c_str(), 0500);
        std::unique_ptr<SQLiteUserDefaults> store;
        const std::string told = toldBy([&] {
            store = openStore();
            EXPECT_EQ(store->objectForKey("mode"), std::nullopt);
            writeTwoValues(*store);
            EXPECT_EQ(store->stringForKey("mode"), "manual");
        });
        EXPECT_EQ(lineCount(told), 1U) << told;
        ::chmod(directory_.c_str(), 0700);
        store->setBool(true, "soundEnabled");
        EXPECT_EQ(storedRows(), bothWrites);
    });
}

TEST_F(StoreFaultTest, fileOfAnotherUser_changesAreKept) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give a file to another user";
    }
    makeStore();
    EXPECT_EQ(::chown(file_.parent_path().c_str(), unprivilegedUser(), static_cast<gid_t>(-1)), 0);
    asUser([this] {
        const std::string told = toldBy([&] {
            const auto store = openStore();
            EXPECT_EQ(store->objectForKey("mode"), std::nullopt);
            writeTwoValues(*store);
            EXPECT_EQ(store->stringForKey("mode"), "manual");
        });
        EXPECT_EQ(lineCount(told), 1U) << told;
    });
    EXPECT_TRUE(namesSetAside().empty());
    EXPECT_EQ(Outsider(file_).text("SELECT value FROM defaults WHERE key = 'soundEnabled'"), "0");
}

}  // namespace
}  // namespace vantrel::desktop
