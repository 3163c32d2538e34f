#include <sys/stat.h>

#include "ChildRun.hpp"
#include "StoreFixture.hpp"

namespace vantrel::desktop {
namespace {

class StoreDamageTest : public StoreTest {
  protected:
    /// The database as a clean end left it: two pages of 4096 bytes.
    void makeStoreOnDisk() {
        makeStore();
        sound_ = contentsOf(file_);
        ASSERT_EQ(sound_.size(), 8192U);
    }

    /// Opens the store and expects built-in values, the bad bytes under another name, and a new store that works.
    void expectSetAsideAtLaunch(const std::string& bytes) {
        testing::internal::CaptureStderr();
        {
            const auto store = openStore();
            EXPECT_EQ(store->objectForKey("mode"), std::nullopt);
            store->setObject(std::string("automatic"), "mode");
            EXPECT_FALSE(store->hasUnstoredValues());
        }
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_EQ(lineCount(told), 1U) << told;
        const auto aside = namesSetAside();
        ASSERT_GE(aside.size(), 1U);
        EXPECT_NE(told.find(aside.front()), std::string::npos) << told;
        EXPECT_EQ(contentsOf(file_.parent_path() / aside.front()), bytes);
        EXPECT_EQ(Outsider(file_).text("SELECT value FROM defaults"), "automatic");
    }

    /// Spoils the table in the file of a store that is open, and makes the store look at the file again.
    void spoilTablePage() {
        // Through a descriptor of another process: closing one here would drop the store's locks.
        const auto spoil = [this] {
            std::string damaged = sound_;
            damaged.replace(4096, 4096, std::string(4096, 'x'));
            writeContents(file_, damaged);
        };
        EXPECT_EQ(runInChild(ChildUser::same, spoil), 0);
        EXPECT_EQ(Outsider(file_).execute("PRAGMA user_version = 1"), SQLITE_OK);
    }

    std::string sound_;
};

TEST_F(StoreDamageTest, open_garbage_isSetAside) {
    std::filesystem::create_directories(file_.parent_path());
    const std::string garbage(10'000, 'x');
    writeContents(file_, garbage);
    expectSetAsideAtLaunch(garbage);
    EXPECT_EQ(modeOf(file_), 0600U);
    EXPECT_EQ(modeOf(file_.parent_path() / namesSetAside().front()), 0600U);
}

TEST_F(StoreDamageTest, open_shortGarbage_isSetAside) {
    std::filesystem::create_directories(file_.parent_path());
    writeContents(file_, "??");
    expectSetAsideAtLaunch("??");
}

TEST_F(StoreDamageTest, open_fileTruncatedAnywhere_isSetAside) {
    makeStoreOnDisk();
    for (std::size_t length = 2; length < sound_.size(); length += 409) {
        SCOPED_TRACE(length);
        writeContents(file_, sound_.substr(0, length));
        expectSetAsideAtLaunch(sound_.substr(0, length));
        std::filesystem::remove_all(file_.parent_path());
        std::filesystem::create_directory(file_.parent_path());
    }
}

class StoreGarbageInsideTest : public StoreDamageTest, public testing::WithParamInterface<std::size_t> {};

TEST_P(StoreGarbageInsideTest, open_garbageInside_isSetAside) {
    makeStoreOnDisk();
    std::string damaged = sound_;
    damaged.replace(GetParam(), 512, std::string(512, '\x5a'));
    writeContents(file_, damaged);
    expectSetAsideAtLaunch(damaged);
}

// In the header, in the schema's page and in the page of the table.
INSTANTIATE_TEST_SUITE_P(Places, StoreGarbageInsideTest, testing::Values(0, 16, 100, 4096));

TEST_F(StoreDamageTest, open_emptyFile_isANewStore) {
    std::filesystem::create_directories(file_.parent_path());
    writeContents(file_, "");
    const auto store = openStore();
    store->setBool(true, "soundEnabled");
    EXPECT_TRUE(namesSetAside().empty());
    EXPECT_EQ(Outsider(file_).text("SELECT value FROM defaults"), "1");
}

TEST_F(StoreDamageTest, open_damagedFileWithLog_setsBothAside) {
    EXPECT_EQ(runInChild(ChildUser::same,
                         [&] {
                             const auto store = openStore();
                             store->setObject(std::string("manual"), "mode");
                             ::_exit(0);
                         }),
              0);
    const std::string log = contentsOf(file_.string() + "-wal");
    ASSERT_GT(log.size(), 4096U);
    writeContents(file_, std::string(4096, 'x'));
    // The log holds the schema's page, so that SQLite never looks at the damaged one in the file: spoil that too.
    std::string spoilt = log;
    spoilt.replace(32 + 24, 512, std::string(512, 'x'));
    writeContents(file_.string() + "-wal", spoilt);
    testing::internal::CaptureStderr();
    const auto store = openStore();
    testing::internal::GetCapturedStderr();
    const auto aside = namesSetAside();
    ASSERT_GE(aside.size(), 2U);
    EXPECT_EQ(contentsOf(file_.parent_path() / (aside.front() + "-wal")), spoilt);
    EXPECT_EQ(contentsOf(file_.parent_path() / aside.front()), std::string(4096, 'x'));
}

TEST_F(StoreDamageTest, open_emptyFileBesideLog_keepsTheLog) {
    EXPECT_EQ(runInChild(ChildUser::same,
                         [&] {
                             const auto store = openStore();
                             store->setObject(std::string("manual"), "mode");
                             ::_exit(0);
                         }),
              0);
    const std::string log = contentsOf(file_.string() + "-wal");
    for (const bool isMissing : {false, true}) {
        writeContents(file_.string() + "-wal", log);
        writeContents(file_, "");
        if (isMissing) {
            std::filesystem::remove(file_);
        }
        testing::internal::CaptureStderr();
        openStore().reset();
        EXPECT_EQ(lineCount(testing::internal::GetCapturedStderr()), 1U);
    }
    std::size_t logsKept = 0;
    for (const std::string& name : namesSetAside()) {
        if (name.ends_with("-wal")) {
            EXPECT_EQ(contentsOf(file_.parent_path() / name), log);
            ++logsKept;
        }
    }
    EXPECT_EQ(logsKept, 2U);
}

TEST_F(StoreDamageTest, open_damagedAgain_takesAnotherName) {
    std::filesystem::create_directories(file_.parent_path());
    testing::internal::CaptureStderr();
    for (const char* garbage : {"first", "second", "third"}) {
        writeContents(file_, garbage);
        openStore().reset();
    }
    testing::internal::GetCapturedStderr();
    std::vector<std::string> kept;
    for (const std::string& name : namesSetAside()) {
        kept.push_back(contentsOf(file_.parent_path() / name));
    }
    for (const char* garbage : {"first", "second", "third"}) {
        EXPECT_NE(std::find(kept.begin(), kept.end(), garbage), kept.end()) << garbage;
    }
}

TEST_F(StoreDamageTest, write_fileDamagedMeanwhile_startsAfreshWithAllThatIsKnown) {
    makeStoreOnDisk();
    testing::internal::CaptureStderr();
    {
        const auto store = openStore();
        spoilTablePage();
        store->setObject(DefaultsData{"{}"}, "rememberedPositions");
    }
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(lineCount(told), 1U) << told;
    EXPECT_GE(namesSetAside().size(), 1U);
    const std::vector<std::string> expected{
        "mode|manual",    "primaryHotKeyCode|2", "primaryHotKeyModifiers|6912", "rememberedPositions|{}",
        "savedPoints|[]", "soundEnabled|0"};
    EXPECT_EQ(Outsider(file_).rows("SELECT key, value FROM defaults ORDER BY key"), expected);
}

TEST_F(StoreDamageTest, checkpoint_headerSpoiltMeanwhile_isWrittenAnewFromTheLog) {
    makeStoreOnDisk();
    StoreOptions options = quietOptions();
    options.checkpoints.idle = std::chrono::milliseconds(1);
    {
        const auto store = openStore(options);
        const auto spoil = [this] {
            std::string damaged = sound_;
            damaged.replace(0, 512, std::string(512, 'x'));
            writeContents(file_, damaged);
        };
        EXPECT_EQ(runInChild(ChildUser::same, spoil), 0);
        store->setBool(true, "soundEnabled");
        EXPECT_TRUE(loopUntil([&] { return store->isAtRest(); }));
        EXPECT_FALSE(store->hasUnstoredValues());
    }
    EXPECT_TRUE(namesSetAside().empty());
    Outsider outsider(file_);
    EXPECT_EQ(outsider.text("PRAGMA integrity_check"), "ok");
    EXPECT_EQ(outsider.text("SELECT value FROM defaults WHERE key = 'soundEnabled'"), "1");
    EXPECT_EQ(outsider.text("SELECT value FROM defaults WHERE key = 'mode'"), "manual");
}

TEST_F(StoreDamageTest, open_damagedFileInReadOnlyDirectory_leavesItAndWorksInMemory) {
    EXPECT_EQ(::chown(directory_.c_str(), unprivilegedUser(), static_cast<gid_t>(-1)), 0);
    EXPECT_EQ(runInChild(ChildUser::unprivileged,
                         [&] {
                             std::filesystem::create_directories(file_.parent_path());
                             writeContents(file_, "garbage");
                             ::chmod(file_.parent_path().c_str(), 0500);
                             testing::internal::CaptureStderr();
                             const auto store = openStore();
                             store->setObject(std::string("manual"), "mode");
                             store->setBool(true, "soundEnabled");
                             EXPECT_EQ(store->stringForKey("mode"), "manual");
                             const std::string told = testing::internal::GetCapturedStderr();
                             EXPECT_EQ(lineCount(told), 1U) << told;
                             EXPECT_EQ(contentsOf(file_), "garbage");
                             // Once it can be set aside, the next change of any key stores everything.
                             ::chmod(file_.parent_path().c_str(), 0700);
                             testing::internal::CaptureStderr();
                             store->setBool(false, "soundEnabled");
                             testing::internal::GetCapturedStderr();
                             EXPECT_FALSE(store->hasUnstoredValues());
                             EXPECT_EQ(namesSetAside().size(), 1U);
                         }),
              0);
    const std::vector<std::string> expected{"mode|manual", "soundEnabled|0"};
    EXPECT_EQ(Outsider(file_).rows("SELECT key, value FROM defaults ORDER BY key"), expected);
}

}  // namespace
}  // namespace vantrel::desktop
