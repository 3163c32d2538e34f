// What may lie in the store's place: links, other kinds of files, another program's database.
#include <sys/stat.h>

#include "StoreFaultFixture.hpp"

namespace vantrel::desktop {
namespace {

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
