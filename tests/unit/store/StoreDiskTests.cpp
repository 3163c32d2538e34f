// Disks that are full or broken.
#include <unistd.h>

#include <cstdio>
#include <stdexcept>

#include "StoreFaultFixture.hpp"
#include "SystemCallFault.hpp"
#include "tests/desk/support/MountPoint.hpp"

namespace vantrel::desktop {
namespace {

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

}  // namespace
}  // namespace vantrel::desktop
