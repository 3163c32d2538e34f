// A store that cannot be read at launch: what it holds is not overwritten, and comes to those who asked once it can be.
#include <sys/stat.h>
#include <unistd.h>

#include "StoreFaultFixture.hpp"
#include "SystemCallFault.hpp"

namespace vantrel::desktop {
namespace {

namespace fs = std::filesystem;

class StoreReadLateTest : public StoreFaultTest {
  protected:
    StoreReadLateTest() { makeStore(); }

    static StoreOptions impatientOptions() {
        StoreOptions options = quietOptions();
        options.firstRetry = std::chrono::milliseconds(5);
        return options;
    }

    /// Opens the store as a controller does, which joins its list with the stored one.
    void launch(const StoreOptions& options = impatientOptions()) {
        store = openStore(options);
        store->setLateReadHandler([this](const UserDefaults::Values& stored) {
            ++readings;
            modeWhileTakingIn = store->stringForKey("mode");
            rowsWhileTakingIn = storedRows();
            if (whileTakingIn) {
                whileTakingIn();
            }
            store->setObject(DefaultsData{joined(stored.at("savedPoints"))}, "savedPoints");
        });
    }

    static std::string joined(const DefaultsValue& list) { return std::get<DefaultsData>(list).bytes + "[own]"; }

    void setModeAndPoints() const {
        store->setObject(std::string("automatic"), "mode");
        store->setObject(DefaultsData{"[own]"}, "savedPoints");
    }

    [[nodiscard]] bool isReadSoon() const {
        return loopUntil([this] { return readings > 0; });
    }

    void expectBothInTheFile() {
        EXPECT_EQ(readings, 1);
        EXPECT_EQ(modeWhileTakingIn, "automatic") << "what was set in the meantime stays";
        EXPECT_EQ(rowsWhileTakingIn, asMade) << "nothing is written before";
        EXPECT_FALSE(store->hasUnstoredValues());
        EXPECT_EQ(storedRows(), asJoined);
        EXPECT_TRUE(namesSetAside().empty());
    }

    const std::vector<std::string> asMade{"mode|manual", "primaryHotKeyCode|2", "primaryHotKeyModifiers|6912",
                                          "savedPoints|[]", "soundEnabled|0"};
    const std::vector<std::string> asJoined{"mode|automatic", "primaryHotKeyCode|2", "primaryHotKeyModifiers|6912",
                                            "savedPoints|[][own]", "soundEnabled|0"};
    int readings = 0;
    std::optional<std::string> modeWhileTakingIn;
    std::vector<std::string> rowsWhileTakingIn;
    std::function<void()> whileTakingIn;
    std::unique_ptr<SQLiteUserDefaults> store;  // last: its end may be a reading
};

TEST_F(StoreReadLateTest, exclusiveLockWithARollbackJournal_isReadWhenItIsGoneAndThenWritten) {
    Outsider outsider(file_);
    outsider.execute("PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE");
    const int sleepsBefore = waitCounts().mainThreadSleeps;
    const std::string told = toldBy([this] {
        launch();
        EXPECT_EQ(store->objectForKey("savedPoints"), std::nullopt);
        setModeAndPoints();
    });
    EXPECT_GT(waitCounts().mainThreadSleeps, sleepsBefore) << "a short lock is waited for";
    EXPECT_EQ(lineCount(told), 1U) << told;
    EXPECT_TRUE(store->hasUnstoredValues());
    outsider.execute("COMMIT");
    EXPECT_TRUE(isReadSoon());
    expectBothInTheFile();
    EXPECT_EQ(store->integerForKey("primaryHotKeyModifiers"), 6912);
}

TEST_F(StoreReadLateTest, exclusiveLockWithALog_isReadWhenItIsGoneAndThenWritten) {
    auto outsider = std::make_unique<Outsider>(file_);
    outsider->execute("PRAGMA locking_mode=EXCLUSIVE; BEGIN IMMEDIATE; UPDATE defaults SET value = value");
    EXPECT_EQ(toldBy([this] { launch(); }), "vantrel: the settings file " + file_.string() +
                                                " is locked by another program; changes are kept until they can be "
                                                "stored\n");
    EXPECT_EQ(store->objectForKey("savedPoints"), std::nullopt);
    setModeAndPoints();
    outsider->execute("COMMIT");
    outsider.reset();
    EXPECT_TRUE(isReadSoon());
    expectBothInTheFile();
}

TEST_F(StoreReadLateTest, writersLockWithALog_isReadAtLaunch) {
    Outsider outsider(file_);
    EXPECT_EQ(outsider.text("PRAGMA journal_mode"), "wal");
    outsider.execute("BEGIN EXCLUSIVE");
    launch();
    EXPECT_EQ(store->dataForKey("savedPoints"), "[]");
    store->setObject(DefaultsData{"[][own]"}, "savedPoints");
    outsider.execute("COMMIT");
    EXPECT_TRUE(loopUntil([this] { return !store->hasUnstoredValues(); }));
    EXPECT_EQ(readings, 0);
    EXPECT_EQ(outsider.text("SELECT value FROM defaults WHERE key = 'savedPoints'"), "[][own]");
}

TEST_F(StoreReadLateTest, directoryThatLetsNobodyIn_isReadWhenItDoesAgain) {
    EXPECT_EQ(::chown(file_.parent_path().c_str(), unprivilegedUser(), static_cast<gid_t>(-1)), 0);
    EXPECT_EQ(::chown(file_.c_str(), unprivilegedUser(), static_cast<gid_t>(-1)), 0);
    asUser([this] {
        ::chmod(file_.parent_path().c_str(), 0);
        const std::string told = toldBy([this] {
            launch();
            setModeAndPoints();
        });
        EXPECT_EQ(lineCount(told), 1U) << told;
        ::chmod(file_.parent_path().c_str(), 0700);
        EXPECT_TRUE(isReadSoon());
        expectBothInTheFile();
    });
}

TEST_F(StoreReadLateTest, directoryBehindALinkThatLeadsNowhere_isReadWhenItIsThere) {
    fs::rename(file_.parent_path(), directory_ / "away");
    fs::create_directory_symlink(directory_ / "disk", file_.parent_path());
    toldBy([this] {
        launch();
        setModeAndPoints();
    });
    fs::rename(directory_ / "away", directory_ / "disk");
    EXPECT_TRUE(isReadSoon());
    expectBothInTheFile();
}

TEST_F(StoreReadLateTest, directoryAwayAtLaunchAndPutBackAfterAChange_isReadBeforeTheNextOne) {
    fs::rename(file_.parent_path(), directory_ / "away");
    launch();
    setModeAndPoints();
    EXPECT_TRUE(loopUntil([this] { return !store->looksForFileSoon(); }));
    EXPECT_FALSE(store->hasUnstoredValues()) << "a store was made in the place of the one that was not there";
    fs::rename(file_.parent_path(), directory_ / "stand-in");
    fs::rename(directory_ / "away", file_.parent_path());
    store->setBool(false, "soundEnabled");
    EXPECT_TRUE(isReadSoon());
    expectBothInTheFile();
}

TEST_F(StoreReadLateTest, nothingSetInTheMeantime_isReadAllTheSame) {
    Outsider outsider(file_);
    outsider.execute("PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE");
    toldBy([this] { launch(); });
    EXPECT_FALSE(store->isAtRest());
    outsider.execute("COMMIT");
    EXPECT_TRUE(isReadSoon());
    EXPECT_EQ(modeWhileTakingIn, "manual");
}

TEST_F(StoreReadLateTest, writingFailsAfterTheReading_bothAreStoredTogetherLater) {
    Outsider outsider(file_);
    outsider.execute("PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE");
    toldBy([this] {
        launch();
        setModeAndPoints();
    });
    whileTakingIn = [&] { EXPECT_EQ(outsider.execute("BEGIN IMMEDIATE"), SQLITE_OK); };
    outsider.execute("COMMIT");
    EXPECT_TRUE(isReadSoon());
    EXPECT_TRUE(store->hasUnstoredValues());
    EXPECT_EQ(storedRows(), asMade);
    outsider.execute("COMMIT");
    EXPECT_TRUE(loopUntil([this] { return !store->hasUnstoredValues(); }));
    expectBothInTheFile();
}

TEST_F(StoreReadLateTest, neverReadable_triesForAWhileAndThenWithEachChangeOnly) {
    fs::rename(file_, directory_ / "away");
    fs::create_directory(file_);
    StoreOptions options = impatientOptions();
    options.longestRetry = options.firstRetry * 4;
    const std::string told = toldBy([&] {
        launch(options);
        EXPECT_FALSE(store->isAtRest());
        EXPECT_TRUE(loopUntil([this] { return store->isAtRest(); }));
        setModeAndPoints();
        EXPECT_TRUE(store->isAtRest());
    });
    EXPECT_EQ(lineCount(told), 1U) << told;
    fs::remove(file_);
    fs::rename(directory_ / "away", file_);
    store->setBool(false, "soundEnabled");
    expectBothInTheFile();
}

TEST_F(StoreReadLateTest, lockThatStays_isToldInOneLineHoweverOftenItIsTried) {
    Outsider outsider(file_);
    outsider.execute("PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE");
    StoreOptions options = impatientOptions();
    options.firstRetry = std::chrono::milliseconds(1);
    const std::string told = toldBy([&] {
        launch(options);
        setModeAndPoints();
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(100);
        loopUntil([&] { return std::chrono::steady_clock::now() > end; });
    });
    EXPECT_EQ(lineCount(told), 1U) << told;
    outsider.execute("COMMIT");
}

TEST_F(StoreReadLateTest, end_readableAtLast_isReadAndWritten) {
    Outsider outsider(file_);
    outsider.execute("PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE");
    toldBy([this] {
        launch(quietOptions());
        setModeAndPoints();
    });
    outsider.execute("COMMIT");
    store->finish();
    expectBothInTheFile();
}

TEST_F(StoreReadLateTest, end_nobodyToTakeItIn_staysAsItIs) {
    Outsider outsider(file_);
    outsider.execute("PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE");
    toldBy([this] {
        launch(quietOptions());
        setModeAndPoints();
    });
    store->setLateReadHandler(nullptr);
    outsider.execute("COMMIT");
    toldBy([this] { store.reset(); });
    EXPECT_EQ(storedRows(), asMade);
}

TEST_F(StoreReadLateTest, damaged_isSetAsideAndWhatWasSetIsStored) {
    fs::create_directory(directory_ / "disk");
    fs::rename(file_.parent_path(), directory_ / "away");
    fs::create_directory_symlink(directory_ / "nowhere", file_.parent_path());
    toldBy([this] {
        launch();
        setModeAndPoints();
    });
    writeContents(directory_ / "away" / "defaults.sqlite3", "garbage");
    toldBy([this] {
        fs::rename(directory_ / "away", directory_ / "nowhere");
        EXPECT_TRUE(loopUntil([this] { return !store->hasUnstoredValues(); }));
    });
    EXPECT_EQ(readings, 0);
    EXPECT_EQ(namesSetAside().size(), 1U);
    EXPECT_EQ(storedRows(), (std::vector<std::string>{"mode|automatic", "savedPoints|[own]"}));
}

TEST_F(StoreReadLateTest, readAtLaunch_isNotReadAgain) {
    launch();
    setModeAndPoints();
    EXPECT_TRUE(loopUntil([this] { return !store->looksForFileSoon(); }));
    fs::rename(file_.parent_path(), directory_ / "away");
    fs::copy(directory_ / "away", file_.parent_path());
    store->setBool(true, "soundEnabled");
    EXPECT_TRUE(loopUntil([this] { return !store->looksForFileSoon(); }));
    EXPECT_EQ(readings, 0);
}

}  // namespace
}  // namespace vantrel::desktop
