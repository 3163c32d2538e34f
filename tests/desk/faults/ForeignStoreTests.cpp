// Stores that others made: another user's, and a later version's. What is not ours stays as it is.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

namespace fs = std::filesystem;

/// A user whom nobody is.
constexpr uid_t otherUser = 54321;

/// A store that belongs to somebody else.
struct OthersStore {
    const char* name;
    fs::perms rights;
    bool isDirectoryTheirsToo;

    friend void PrintTo(const OthersStore& store, std::ostream* stream) { *stream << store.name; }
};

class StoreOfAnotherUserTest : public testing::Test {
  protected:
    void SetUp() override {
        if (geteuid() != 0) {
            GTEST_SKIP() << "only root can give a file to another user";
        }
        // An ordinary life, so that the file is as an agent leaves it.
        const auto agent = desk_.startAgent();
        desk_.pointer().moveTo(elsewhereOnMain);
        desk_.keyboard().type(hyper(keys::s));
        ASSERT_TRUE(waitUntil([&] { return desk_.defaults().read("savedPoints").has_value(); }));
        ASSERT_EQ(agent->terminate(), ordinaryEnd);
        // Root without privileges is stopped by permissions like any other user, and the desk lets it in.
        desk_.wrapAgent({"setpriv", "--bounding-set=-all", "--inh-caps=-all"});
    }

    void giveStoreAway(const OthersStore& others) {
        const fs::path file = desk_.home().storeFile();
        fs::permissions(file, others.rights);
        ASSERT_EQ(chown(file.c_str(), otherUser, otherUser), 0);
        if (others.isDirectoryTheirsToo) {
            ASSERT_EQ(chown(file.parent_path().c_str(), otherUser, otherUser), 0);
        }
    }

    void takeStoreBack() {
        const fs::path file = desk_.home().storeFile();
        ASSERT_EQ(chown(file.c_str(), 0, 0), 0);
        ASSERT_EQ(chown(file.parent_path().c_str(), 0, 0), 0);
    }

    /// The names of the files in the store's directory, each with all that is in it.
    std::map<std::string, std::string> filesOfTheStore() {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::directory_iterator(desk_.home().storeFile().parent_path())) {
            std::ostringstream content;
            content << std::ifstream(entry.path(), std::ios::binary).rdbuf();
            files.emplace(entry.path().filename(), content.str());
        }
        return files;
    }

    void expectStoreIsAsBefore(const std::map<std::string, std::string>& before) {
        const auto now = filesOfTheStore();
        for (const auto& [name, content] : now) {
            EXPECT_TRUE(before.contains(name)) << name << " has come";
        }
        for (const auto& [name, content] : before) {
            ASSERT_TRUE(now.contains(name)) << name << " has gone";
            EXPECT_TRUE(now.at(name) == content) << name << " has changed";
        }
    }

    void expectJumpsThereAndBack() {
        desk_.pointer().moveTo(onMain);
        desk_.keyboard().type(hyper(keys::d));
        EXPECT_TRUE(desk_.pointer().waitFor(centreOfSecond)) << desk_.pointer().position();
        desk_.keyboard().type(hyper(keys::s));
        desk_.keyboard().type(hyper(keys::d));
        EXPECT_TRUE(desk_.pointer().waitFor(onMain)) << "remembered all the same; " << desk_.pointer().position();
    }

    void expectOneLineAboutTheStore(const AgentProcess& agent) {
        const std::string told = agent.standardError();
        EXPECT_EQ(std::ranges::count(told, '\n'), 1) << told;
        EXPECT_NE(told.find(desk_.home().storeFile()), std::string::npos) << told;
    }

    /// Jumps with the store given away, and checks that this did nothing to it.
    void expectStoreIsLeftAlone() {
        const auto before = filesOfTheStore();
        const auto agent = desk_.startAgent();
        expectJumpsThereAndBack();
        expectStoreIsAsBefore(before);
        EXPECT_EQ(agent->terminate(), ordinaryEnd);
        expectStoreIsAsBefore(before);
        expectOneLineAboutTheStore(*agent);
    }

    Desk desk_;
};

class StoreOfAnotherUser : public StoreOfAnotherUserTest, public testing::WithParamInterface<OthersStore> {};

TEST_P(StoreOfAnotherUser, jumps_workAndTheStoreIsLeftAlone) {
    giveStoreAway(GetParam());
    expectStoreIsLeftAlone();
}

TEST_P(StoreOfAnotherUser, storeIsGivenBack_nextChangeStoresAll) {
    giveStoreAway(GetParam());
    const auto agent = desk_.startAgent();
    expectJumpsThereAndBack();
    takeStoreBack();
    EXPECT_EQ(desk_.defaults().read("rememberedPositions"), std::nullopt) << "writing was really refused";
    desk_.keyboard().type(hyper(keys::s));
    // Keys are served in order, so what the first changed is stored when the pointer has come. A reader that asked
    // earlier would hold the lock now and then.
    desk_.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk_.pointer().waitFor(centreOfSecond)) << desk_.pointer().position();
    EXPECT_EQ(desk_.defaults().typeOf("rememberedPositions"), "blob");
    EXPECT_NE(desk_.defaults().read("savedPoints").value_or("").find(R"("x":700,)"), std::string::npos);
    EXPECT_EQ(desk_.defaults().read("animation"), "none") << "nothing was lost";
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    expectOneLineAboutTheStore(*agent);
}

constexpr fs::perms forTheOwner = fs::perms::owner_read | fs::perms::owner_write;
constexpr fs::perms readableForAll = forTheOwner | fs::perms::group_read | fs::perms::others_read;

INSTANTIATE_TEST_SUITE_P(
    Files, StoreOfAnotherUser,
    testing::Values(OthersStore{.name = "closed", .rights = forTheOwner, .isDirectoryTheirsToo = false},
                    OthersStore{.name = "readable", .rights = readableForAll, .isDirectoryTheirsToo = false},
                    OthersStore{.name = "inTheirDirectory", .rights = forTheOwner, .isDirectoryTheirsToo = true}),
    [](const auto& test) { return test.param.name; });

TEST_F(StoreOfAnotherUserTest, damagedStore_isNotSetAside) {
    std::ofstream(desk_.home().storeFile(), std::ios::binary | std::ios::trunc) << std::string(4096, 'x');
    giveStoreAway({.name = "damaged", .rights = readableForAll, .isDirectoryTheirsToo = false});
    expectStoreIsLeftAlone();
}

/// All in the store that this version does not know, and what it knows and has no reason to change.
std::vector<std::string> foreignContents(const StoredDefaults& store) {
    std::vector<std::string> contents;
    for (const char* const query :
         {"SELECT type, name, sql FROM sqlite_schema ORDER BY name", "SELECT at, hex(what), typeof(what) FROM history",
          "SELECT key, typeof(value), hex(value), changed FROM defaults "
          "WHERE key NOT IN ('rememberedPositions', 'savedPoints') ORDER BY key",
          "SELECT key, changed FROM defaults WHERE key IN ('rememberedPositions', 'savedPoints') ORDER BY key",
          "PRAGMA user_version", "PRAGMA application_id"}) {
        std::ranges::copy(store.rows(query), std::back_inserter(contents));
    }
    return contents;
}

TEST(StoreOfALaterVersion, twoLives_leaveWhatTheyDoNotKnow) {
    Desk desk;
    desk.defaults().execute(R"(
        CREATE TABLE history(at INTEGER, what ANY);
        INSERT INTO history VALUES(7, 'kept'), (8, x'00FF'), (9, NULL);
        CREATE INDEX historyByTime ON history(at);
        CREATE VIEW recent AS SELECT what FROM history WHERE at > 7;
        INSERT INTO defaults VALUES('rememberedPositions', CAST('{"5":{"x":1,"y":2}}' AS BLOB)),
                                   ('savedPoints', CAST('[]' AS BLOB));
        ALTER TABLE defaults ADD COLUMN changed INTEGER;
        UPDATE defaults SET changed = 9;
        INSERT INTO defaults VALUES('gesture', 'circle', 11), ('gestureData', x'0001FE', NULL), ('speed', 1.5, 13);
        PRAGMA user_version = 42;
        PRAGMA application_id = 77;)");
    const auto before = foreignContents(desk.defaults());
    ASSERT_EQ(before.size(), 16U);
    {
        const auto agent = desk.startAgent();
        desk.pointer().moveTo(onMain);
        desk.keyboard().type(hyper(keys::d));
        ASSERT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
        desk.pointer().moveTo(onSecond);
        desk.keyboard().type(hyper(keys::s));
        desk.keyboard().type(hyper(keys::d));
        ASSERT_TRUE(desk.pointer().waitFor(onMain)) << desk.pointer().position();
        EXPECT_EQ(foreignContents(desk.defaults()), before);
        EXPECT_EQ(agent->terminate(), ordinaryEnd);
    }
    EXPECT_EQ(foreignContents(desk.defaults()), before);
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(elsewhereOnMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(onSecond)) << "read by the next start; " << desk.pointer().position();
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(agent->standardError(), "");
    EXPECT_EQ(foreignContents(desk.defaults()), before);
    const std::string positions = desk.defaults().read("rememberedPositions").value_or("");
    EXPECT_NE(positions.find(R"("5":{"x":1,"y":2})"), std::string::npos) << positions;
    EXPECT_NE(desk.defaults().read("savedPoints").value_or("").find(R"("x":-400,)"), std::string::npos);
}

}  // namespace
}  // namespace vantrel::desk
