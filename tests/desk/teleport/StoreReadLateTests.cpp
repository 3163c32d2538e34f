// A store that cannot be read when the agent starts: once it can be, what it holds and what was done since are both
// there.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <ostream>
#include <vector>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

namespace fs = std::filesystem;

constexpr MainPoint stored{.x = 100, .y = 200};
constexpr MainPoint own{.x = 300, .y = 400};

/// Keeps the store from being read until it is destroyed.
class Hindrance {
  public:
    virtual ~Hindrance() = default;
};

class ExclusiveLock final : public Hindrance {
  public:
    ExclusiveLock(const fs::path& file, const char* statements) {
        sqlite3* handle = nullptr;
        EXPECT_EQ(sqlite3_open(file.c_str(), &handle), SQLITE_OK);
        database_.reset(handle);
        EXPECT_EQ(sqlite3_exec(handle, statements, nullptr, nullptr, nullptr), SQLITE_OK);
    }

  private:
    std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database_{nullptr, &sqlite3_close};
};

/// The store's directory is on a disk that is not there yet.
class MissingDisk final : public Hindrance {
  public:
    explicit MissingDisk(const fs::path& directory)
        : disk_(directory.parent_path() / "disk"), away_(directory.parent_path() / "away") {
        fs::rename(directory, away_);
        fs::create_directory_symlink(disk_, directory);
    }
    ~MissingDisk() override { fs::rename(away_, disk_); }
    MissingDisk(const MissingDisk&) = delete;
    MissingDisk& operator=(const MissingDisk&) = delete;

  private:
    fs::path disk_;
    fs::path away_;
};

struct Case {
    const char* name;
    std::unique_ptr<Hindrance> (*hinder)(const fs::path& file);

    friend void PrintTo(const Case& hindrance, std::ostream* stream) { *stream << hindrance.name; }
};

std::vector<MainPoint> storedPoints(const Desk& desk) {
    std::vector<MainPoint> points;
    for (const auto& saved : nlohmann::json::parse(desk.defaults().read("savedPoints").value_or("[]"))) {
        points.push_back({saved.at("point").at("x").get<int>(), saved.at("point").at("y").get<int>()});
    }
    return points;
}

void storeOnePointAndTheModeManual(const Desk& desk) {
    desk.defaults().writeText("mode", "manual");
    desk.defaults().writeData("savedPoints", R"([{"id":"00000000-0000-4000-8000-000000000001","name":"Stored",)"
                                             R"("point":{"x":100,"y":200}}])");
}

void saveAt(Desk& desk, MainPoint point) {
    desk.pointer().moveTo(point);
    desk.keyboard().type(hyper(keys::s));
}

/// Saves a point while the store cannot be seen.
void saveOwnPoint(Desk& desk, const AgentProcess& agent) {
    EXPECT_NE(agent.standardError(), "") << "the store was read";
    saveAt(desk, own);
    // Once the next press has had its effect, so has this one.
    desk.keyboard().type(controlOptionCommand(keys::rightArrow));
    ASSERT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    // The built-in animation: a glide is at its place a little before its end.
    ASSERT_TRUE(waitUntilAtRest(agent.processId(), std::chrono::milliseconds(100)));
    desk.pointer().moveTo(onMain);
}

void waitForPointsInTheStore(const Desk& desk, const std::vector<MainPoint>& points) {
    ASSERT_TRUE(waitUntil([&] { return storedPoints(desk) == points; }))
        << desk.defaults().read("savedPoints").value_or("");
}

/// Hyper + D goes through them, because the mode that is stored applies.
void expectCycle(Desk& desk, std::initializer_list<MainPoint> points) {
    for (const MainPoint expected : points) {
        desk.keyboard().type(hyper(keys::d));
        EXPECT_TRUE(desk.pointer().waitFor(expected)) << desk.pointer().position();
    }
}

class StoreReadLate : public testing::TestWithParam<Case> {};

TEST_P(StoreReadLate, savedBefore_bothAreThereAndTheCycleGoesOn) {
    Desk desk;
    storeOnePointAndTheModeManual(desk);
    auto hindrance = GetParam().hinder(desk.home().storeFile());
    const auto agent = desk.startAgent();
    saveOwnPoint(desk, *agent);
    hindrance.reset();
    waitForPointsInTheStore(desk, {stored, own});
    expectCycle(desk, {own, stored, own});
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(storedPoints(desk), (std::vector<MainPoint>{stored, own}));
    EXPECT_EQ(desk.defaults().read("mode"), "manual");
}

TEST_P(StoreReadLate, nothingDoneBefore_whatIsStoredApplies) {
    Desk desk;
    storeOnePointAndTheModeManual(desk);
    auto hindrance = GetParam().hinder(desk.home().storeFile());
    const auto agent = desk.startAgent();
    EXPECT_NE(agent->standardError(), "") << "the store was read";
    hindrance.reset();
    desk.pointer().moveTo(onMain);
    EXPECT_TRUE(waitUntil([&] {
        desk.keyboard().type(controlOptionCommand(keys::m));
        return desk.pointer().position() == stored;
    }));
}

TEST_P(StoreReadLate, endedBeforeItIsTriedAgain_bothAreStored) {
    Desk desk;
    storeOnePointAndTheModeManual(desk);
    auto hindrance = GetParam().hinder(desk.home().storeFile());
    const auto agent = desk.startAgent();
    saveOwnPoint(desk, *agent);
    hindrance.reset();
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(storedPoints(desk), (std::vector<MainPoint>{stored, own}));
}

TEST(StoreAway, putBackAfterAnotherWasMade_allPointsAreThere) {
    Desk desk;
    storeOnePointAndTheModeManual(desk);
    const fs::path directory = desk.home().storeFile().parent_path();
    fs::rename(directory, directory.parent_path() / "away");
    const auto agent = desk.startAgent();
    saveAt(desk, own);
    waitForPointsInTheStore(desk, {own});
    // In one step: the agent may be just about to look for its file.
    ASSERT_EQ(
        renameat2(AT_FDCWD, directory.c_str(), AT_FDCWD, (directory.parent_path() / "away").c_str(), RENAME_EXCHANGE),
        0);
    saveAt(desk, onMain);
    waitForPointsInTheStore(desk, {stored, own, onMain});
    desk.pointer().moveTo(stored);
    expectCycle(desk, {onMain, stored, own});
}

std::unique_ptr<Hindrance> lockWithARollbackJournal(const fs::path& file) {
    return std::make_unique<ExclusiveLock>(file, "BEGIN EXCLUSIVE");
}

std::unique_ptr<Hindrance> lockWithALog(const fs::path& file) {
    return std::make_unique<ExclusiveLock>(
        file, "PRAGMA journal_mode=WAL; PRAGMA locking_mode=EXCLUSIVE; BEGIN; UPDATE defaults SET value = value");
}

std::unique_ptr<Hindrance> missingDisk(const fs::path& file) {
    return std::make_unique<MissingDisk>(file.parent_path());
}

INSTANTIATE_TEST_SUITE_P(Hindrances, StoreReadLate,
                         testing::Values(Case{"LockWithARollbackJournal", &lockWithARollbackJournal},
                                         Case{"LockWithALog", &lockWithALog}, Case{"MissingDisk", &missingDisk}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vantrel::desk
