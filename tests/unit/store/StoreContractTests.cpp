#include <sys/stat.h>

#include <cmath>
#include <limits>

#include "StoreFixture.hpp"
#include "Vantrel/Desktop/Store/StoreCheckpointer.hpp"

namespace vantrel::desktop {
namespace {

TEST_F(StoreTest, setObject_eachType_keepsItsStorageClass) {
    const auto store = openStore();
    store->setObject(std::string("manual"), "mode");
    store->setBool(true, "soundEnabled");
    store->setObject(std::int64_t{4294967295}, "primaryHotKeyCode");
    store->setObject(DefaultsData{std::string("[\0]", 3)}, "savedPoints");
    store->setObject(DefaultsData{}, "empty");
    store->setObject(0.5, "real");
    store->setObject(std::numeric_limits<double>::quiet_NaN(), "nan");

    Outsider outsider(file_);
    const std::vector<std::string> expected{"empty|blob|",
                                            "mode|text|6D616E75616C",
                                            "nan|text|6E616E",
                                            "primaryHotKeyCode|integer|34323934393637323935",
                                            "real|real|302E35",
                                            "savedPoints|blob|5B005D",
                                            "soundEnabled|integer|31"};
    EXPECT_EQ(outsider.rows("SELECT key, typeof(value), hex(value) FROM defaults ORDER BY key"), expected);
}

TEST_F(StoreTest, open_newFile_hasTheTableOfTheContract) {
    const auto store = openStore();
    Outsider outsider(file_);
    EXPECT_EQ(outsider.text("SELECT sql FROM sqlite_schema"),
              "CREATE TABLE defaults(key TEXT PRIMARY KEY, value ANY NOT NULL) STRICT, WITHOUT ROWID");
    EXPECT_EQ(outsider.text("PRAGMA journal_mode"), "wal");
}

TEST_F(StoreTest, open_newFile_isTheOwnersWhateverTheMask) {
    const mode_t former = ::umask(0777);
    const auto store = openStore();
    store->setBool(true, "soundEnabled");
    ::umask(former);
    for (const char* const suffix : {"", "-wal", "-shm"}) {
        EXPECT_EQ(modeOf(file_.string() + suffix), 0600U) << suffix;
    }
}

TEST_F(StoreTest, open_databaseOfAnotherProgram_isLeftAsItIs) {
    std::filesystem::create_directories(file_.parent_path());
    writeContents(file_, "");
    Outsider(file_).execute("CREATE TABLE bookmarks(name); INSERT INTO bookmarks VALUES('a')");
    testing::internal::CaptureStderr();
    {
        const auto store = openStore();
        store->setBool(true, "soundEnabled");
        EXPECT_TRUE(store->boolForKey("soundEnabled"));
        EXPECT_TRUE(store->hasUnstoredValues());
    }
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(lineCount(told), 1U) << told;
    EXPECT_EQ(Outsider(file_).rows("SELECT name FROM sqlite_schema"), std::vector<std::string>{"bookmarks"});
    EXPECT_TRUE(namesSetAside().empty());
}

TEST_F(StoreTest, read_afterReopening_givesWhatWasWritten) {
    makeStore();
    const auto store = openStore();
    EXPECT_EQ(store->stringForKey("mode"), "manual");
    EXPECT_EQ(store->objectForKey("soundEnabled"), DefaultsValue(std::int64_t{0}));
    EXPECT_FALSE(store->boolForKey("soundEnabled"));
    EXPECT_EQ(store->integerForKey("primaryHotKeyModifiers"), 6912);
    EXPECT_EQ(store->dataForKey("savedPoints"), "[]");
    EXPECT_EQ(store->dataForKey("mode"), std::nullopt);
    EXPECT_EQ(store->stringForKey("savedPoints"), std::nullopt);
    EXPECT_EQ(store->objectForKey("animation"), std::nullopt);
    EXPECT_FALSE(store->boolForKey("animation"));
    EXPECT_EQ(store->integerForKey("animation"), 0);
}

TEST_F(StoreTest, read_valuesOfEachStorageClassFromOutside_converts) {
    makeStore();
    Outsider(file_).execute(
        "INSERT INTO defaults VALUES('yes', 'YES'), ('number', '12abc'), ('real', 3.75), ('huge', 1e300),"
        "('big', 9223372036854775807), ('blob', x'31')");
    const auto store = openStore();
    EXPECT_TRUE(store->boolForKey("yes"));
    EXPECT_EQ(store->integerForKey("number"), 12);
    EXPECT_EQ(store->integerForKey("real"), 3);
    EXPECT_EQ(store->stringForKey("real"), "3.75");
    EXPECT_EQ(store->integerForKey("huge"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(store->stringForKey("big"), "9223372036854775807");
    EXPECT_EQ(store->integerForKey("blob"), 0);
    EXPECT_FALSE(store->boolForKey("blob"));
}

TEST_F(StoreTest, close_afterWriting_leavesOneFileOnly) {
    makeStore();
    EXPECT_TRUE(std::filesystem::exists(file_));
    EXPECT_FALSE(std::filesystem::exists(file_.string() + "-wal"));
    EXPECT_FALSE(std::filesystem::exists(file_.string() + "-shm"));
}

TEST_F(StoreTest, setObjects_sameKeyTwice_storesTheLaterValue) {
    const auto store = openStore();
    store->setObjects({{"mode", std::string("manual")}, {"mode", std::string("automatic")}});
    EXPECT_EQ(Outsider(file_).text("SELECT value FROM defaults"), "automatic");
}

TEST_F(StoreTest, withoutFile_valuesLiveInMemory) {
    SQLiteUserDefaults store(std::nullopt);
    EXPECT_EQ(store.objectForKey("mode"), std::nullopt);
    store.setObject(std::string("manual"), "mode");
    EXPECT_EQ(store.stringForKey("mode"), "manual");
}

TEST_F(StoreTest, outsideReader_duringOpenTransaction_doesNotHinderWrites) {
    const auto store = openStore();
    store->setObject(std::int64_t{1}, "key");
    Outsider outsider(file_);
    outsider.execute("BEGIN; SELECT * FROM defaults");
    store->setObject(std::int64_t{2}, "key");
    EXPECT_FALSE(store->hasUnstoredValues());
    EXPECT_EQ(outsider.text("SELECT value FROM defaults"), "1");
    outsider.execute("COMMIT");
    EXPECT_EQ(outsider.text("SELECT value FROM defaults"), "2");
}

TEST_F(StoreTest, laterVersionsTablesColumnsAndKeys_stayUntouched) {
    makeStore();
    Outsider(file_).execute(
        "CREATE TABLE history(at INTEGER, what TEXT); INSERT INTO history VALUES(7, 'kept');"
        "ALTER TABLE defaults ADD COLUMN changed INTEGER; UPDATE defaults SET changed = 9;"
        "INSERT INTO defaults VALUES('futureKey', 'future', 11); PRAGMA user_version = 42");
    {
        const auto store = openStore();
        EXPECT_EQ(store->stringForKey("mode"), "manual");
        store->setObject(std::string("automatic"), "mode");
        EXPECT_GT(checkpointStore(file_, nullptr).value_or(0), 0);
    }
    Outsider outsider(file_);
    EXPECT_EQ(outsider.text("SELECT at, what FROM history"), "7|kept");
    EXPECT_EQ(outsider.text("SELECT value, changed FROM defaults WHERE key = 'futureKey'"), "future|11");
    EXPECT_EQ(outsider.text("SELECT value, changed FROM defaults WHERE key = 'mode'"), "automatic|9");
    EXPECT_EQ(outsider.text("PRAGMA user_version"), "42");
}

}  // namespace
}  // namespace vantrel::desktop
