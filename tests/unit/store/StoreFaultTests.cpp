#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>

#include "ChildRun.hpp"
#include "StoreFixture.hpp"
#include "SystemCallFault.hpp"
#include "tests/desk/support/MountPoint.hpp"

namespace vantrel::desktop {
namespace {

class StoreFaultTest : public StoreTest {
  protected:
    StoreFaultTest() { EXPECT_EQ(::chown(directory_.c_str(), unprivilegedUser(), static_cast<gid_t>(-1)), 0); }

    /// Runs the body as a user whom permissions stop, which root's children would not be.
    static void asUser(const std::function<void()>& body) { EXPECT_EQ(runInChild(ChildUser::unprivileged, body), 0); }

    /// What the body writes to stderr.
    static std::string toldBy(const std::function<void()>& body) {
        testing::internal::CaptureStderr();
        body();
        return testing::internal::GetCapturedStderr();
    }

    std::vector<std::string> storedRows() {
        return Outsider(file_).rows("SELECT key, value FROM defaults ORDER BY key");
    }
};

const std::vector<std::string> bothWrites{"mode|manual", "soundEnabled|1"};

void writeTwoValues(SQLiteUserDefaults& store) {
    store.setObject(std::string("automatic"), "mode");
    store.setObject(std::string("manual"), "mode");
    store.setBool(true, "soundEnabled");
}

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

TEST_F(StoreFaultTest, directoryInPlaceOfTheFile_changesAreKept) {
    std::filesystem::create_directories(file_ / "inside");
    std::unique_ptr<SQLiteUserDefaults> store;
    const std::string told = toldBy([&] {
        store = openStore();
        writeTwoValues(*store);
    });
    EXPECT_EQ(lineCount(told), 1U) << told;
    EXPECT_TRUE(std::filesystem::exists(file_ / "inside"));
    std::filesystem::remove_all(file_);
    store->setBool(true, "soundEnabled");
    EXPECT_EQ(storedRows(), bothWrites);
}

TEST_F(StoreFaultTest, pipeInPlaceOfTheFile_isLeftAlone) {
    std::filesystem::create_directories(file_.parent_path());
    ASSERT_EQ(::mkfifo(file_.c_str(), 0600), 0);
    const std::string told = toldBy([&] { writeTwoValues(*openStore()); });
    EXPECT_EQ(lineCount(told), 1U) << told;
    EXPECT_TRUE(std::filesystem::is_fifo(file_));
}

TEST_F(StoreFaultTest, danglingSymbolicLink_changesAreKeptUntilItLeadsSomewhere) {
    std::filesystem::create_directories(file_.parent_path());
    std::filesystem::create_symlink(directory_ / "elsewhere" / "settings", file_);
    std::unique_ptr<SQLiteUserDefaults> store;
    const std::string told = toldBy([&] {
        store = openStore();
        writeTwoValues(*store);
    });
    EXPECT_EQ(lineCount(told), 1U) << told;
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    EXPECT_FALSE(std::filesystem::exists(directory_ / "elsewhere"));
    std::filesystem::create_directory(directory_ / "elsewhere");
    writeContents(directory_ / "elsewhere" / "settings", "");
    store->setBool(true, "soundEnabled");
    EXPECT_EQ(storedRows(), bothWrites);
}

TEST_F(StoreFaultTest, symbolicLinkToAFile_isFollowedAndStaysALink) {
    makeStore();
    std::filesystem::rename(file_, directory_ / "settings");
    std::filesystem::create_symlink(directory_ / "settings", file_);
    {
        const auto store = openStore();
        EXPECT_EQ(store->stringForKey("mode"), "manual");
        store->setObject(std::string("automatic"), "mode");
    }
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    EXPECT_EQ(Outsider(directory_ / "settings").text("SELECT value FROM defaults WHERE key = 'mode'"), "automatic");
}

TEST_F(StoreFaultTest, damagedFileBehindASymbolicLink_isSetAsideAndTheLinkLeadsToTheNewOne) {
    std::filesystem::create_directories(file_.parent_path());
    writeContents(directory_ / "settings", "garbage");
    std::filesystem::create_symlink(directory_ / "settings", file_);
    toldBy([&] { writeTwoValues(*openStore()); });
    EXPECT_TRUE(std::filesystem::is_symlink(file_));
    EXPECT_EQ(Outsider(directory_ / "settings").rows("SELECT key, value FROM defaults ORDER BY key"), bothWrites);
}

TEST_F(StoreFaultTest, fullDisk_changesAreKeptAndStoredTogetherByTheNextChange) {
    makeStore();
    const auto store = openStore();
    EXPECT_EQ(store->stringForKey("mode"), "manual");
    const std::string told = toldBy([&] {
        const SystemCallFault fault = SystemCallFault::fullDisk();
        store->setObject(std::string("automatic"), "mode");
        store->setObjects({{"primaryHotKeyCode", std::int64_t{3}}, {"primaryHotKeyModifiers", std::int64_t{4096}}});
        store->setObject(std::int64_t{1}, "primaryHotKeyCode");
        EXPECT_TRUE(store->hasUnstoredValues());
        EXPECT_EQ(store->stringForKey("mode"), "automatic");
    });
    EXPECT_EQ(lineCount(told), 1U) << told;
    EXPECT_EQ(Outsider(file_).text("SELECT value FROM defaults WHERE key = 'mode'"), "manual");
    store->setBool(true, "soundEnabled");
    EXPECT_FALSE(store->hasUnstoredValues());
    const std::vector<std::string> expected{"mode|automatic", "primaryHotKeyCode|1", "primaryHotKeyModifiers|4096",
                                            "savedPoints|[]", "soundEnabled|1"};
    EXPECT_EQ(storedRows(), expected);
}

TEST_F(StoreFaultTest, fullDiskAtLaunch_storedValuesAreRead) {
    makeStore();
    std::unique_ptr<SQLiteUserDefaults> store;
    const std::string told = toldBy([&] {
        const SystemCallFault fault = SystemCallFault::fullDisk();
        store = openStore();
        EXPECT_EQ(store->stringForKey("mode"), "manual");
        EXPECT_EQ(store->dataForKey("savedPoints"), "[]");
        store->setObject(std::string("automatic"), "mode");
        EXPECT_TRUE(store->hasUnstoredValues());
    });
    EXPECT_EQ(lineCount(told), 1U) << told;
    store->setBool(true, "soundEnabled");
    EXPECT_FALSE(store->hasUnstoredValues());
    EXPECT_EQ(Outsider(file_).text("SELECT value FROM defaults WHERE key = 'mode'"), "automatic");
}

TEST_F(StoreFaultTest, brokenDisk_changesAreKeptAndStoredByTheNextChange) {
    const auto store = openStore();
    const std::string told = toldBy([&] {
        const SystemCallFault fault = SystemCallFault::brokenDisk();
        writeTwoValues(*store);
        EXPECT_TRUE(store->hasUnstoredValues());
    });
    EXPECT_GE(lineCount(told), 1U);
    EXPECT_LE(lineCount(told), 2U) << told;
    store->setBool(true, "soundEnabled");
    EXPECT_EQ(storedRows(), bothWrites);
    EXPECT_TRUE(namesSetAside().empty());
}

TEST_F(StoreFaultTest, fullFileSystem_changesAreKeptAndNothingIsDeleted) {
    // A file system of this test's own, that only its child sees. Where the system allows nobody but root to mount one,
    // the tests above stand in with failing writes.
    constexpr int mayNotMount = 77;
    constexpr std::size_t size = 256UL * 1024UL;
    const int status = runInChild(ChildUser::same, [this] {
        try {
            desk::enterPrivateMounts();
        } catch (const std::runtime_error& error) {
            std::fprintf(stderr, "%s\n", error.what());
            ::_exit(::geteuid() == 0 ? 1 : mayNotMount);
        }
        const auto mount = desk::MountPoint::ofSize(directory_, size);
        makeStore();
        const auto store = openStore();
        desk::MountPoint::fill(directory_ / "ballast");
        const std::string big(20'000, 'y');
        toldBy([&] {
            store->setObject(DefaultsData{big}, "rememberedPositions");
            store->setObject(std::string("automatic"), "mode");
        });
        EXPECT_TRUE(store->hasUnstoredValues());
        EXPECT_EQ(store->stringForKey("mode"), "automatic");
        std::filesystem::remove(directory_ / "ballast");
        store->setBool(true, "soundEnabled");
        EXPECT_FALSE(store->hasUnstoredValues());
        Outsider outsider(file_);
        EXPECT_EQ(outsider.text("SELECT length(value) FROM defaults WHERE key = 'rememberedPositions'"), "20000");
        EXPECT_EQ(outsider.text("SELECT value FROM defaults WHERE key = 'mode'"), "automatic");
        EXPECT_EQ(outsider.text("SELECT value FROM defaults WHERE key = 'savedPoints'"), "[]");
    });
    if (status == mayNotMount) {
        GTEST_SKIP() << "this user may not mount a file system";
    }
    EXPECT_EQ(status, 0);
}

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

TEST_F(StoreFaultTest, anotherProgramHoldsTheLockAtLaunch_isWaitedForAndThenWrittenLater) {
    makeStore();
    Outsider outsider(file_);
    outsider.execute("PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE");
    const int sleepsBefore = waitCounts().mainThreadSleeps;
    std::unique_ptr<SQLiteUserDefaults> store;
    const std::string told = toldBy([&] {
        store = openStore();
        store->setBool(true, "soundEnabled");
    });
    EXPECT_GT(waitCounts().mainThreadSleeps, sleepsBefore);
    EXPECT_EQ(lineCount(told), 1U) << told;
    EXPECT_TRUE(store->hasUnstoredValues());
    outsider.execute("COMMIT");
    store->setObject(std::string("automatic"), "mode");
    EXPECT_FALSE(store->hasUnstoredValues());
    EXPECT_EQ(outsider.text("SELECT value FROM defaults WHERE key = 'soundEnabled'"), "1");
}

TEST_F(StoreFaultTest, foreignDatabase_isLeftAlone) {
    std::filesystem::create_directories(file_.parent_path());
    writeContents(file_, "");
    Outsider(file_).execute("CREATE TABLE defaults(name, setting); INSERT INTO defaults VALUES('a', 'b')");
    const std::string told = toldBy([&] { writeTwoValues(*openStore()); });
    EXPECT_EQ(lineCount(told), 1U) << told;
    EXPECT_EQ(Outsider(file_).text("SELECT name, setting FROM defaults"), "a|b");
    EXPECT_TRUE(namesSetAside().empty());
}

}  // namespace
}  // namespace vantrel::desktop
