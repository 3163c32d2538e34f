// A store that is damaged, read-only or full never stops the agent, and nothing of the person's is deleted.
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/MountPoint.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t smallDisk = 1024UL * 1024UL;

std::string contentOf(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

void expectHyperDJumps(Desk& desk) {
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
}

/// Whether both what was remembered and what was saved are in the store.
bool hasBothKeys(const Desk& desk) {
    return desk.defaults().typeOf("rememberedPositions") == "blob" && desk.defaults().typeOf("savedPoints") == "blob";
}

TEST(StoreTrouble, launch_storeIsGarbage_worksAndSetsItAside) {
    Desk desk;
    const std::string garbage(5000, 'x');
    std::ofstream(desk.home().storeFile(), std::ios::binary | std::ios::trunc) << garbage;
    const auto agent = desk.startAgent();
    expectHyperDJumps(desk);
    EXPECT_TRUE(waitUntil([&] { return desk.defaults().typeOf("rememberedPositions") == "blob"; }));
    bool isKept = false;
    for (const auto& entry : fs::directory_iterator(desk.home().storeFile().parent_path())) {
        isKept = isKept || (entry.path() != desk.home().storeFile() && contentOf(entry.path()) == garbage);
    }
    EXPECT_TRUE(isKept) << "the damaged file is there under another name";
}

TEST(StoreTrouble, launch_storeIsCutOff_works) {
    Desk desk;
    const auto whole = contentOf(desk.home().storeFile());
    fs::resize_file(desk.home().storeFile(), whole.size() / 2);
    const auto agent = desk.startAgent();
    expectHyperDJumps(desk);
}

TEST(StoreTrouble, launch_storeIsADirectory_works) {
    Desk desk;
    fs::remove(desk.home().storeFile());
    fs::create_directories(desk.home().storeFile() / "occupied");
    const auto agent = desk.startAgent();
    expectHyperDJumps(desk);
    EXPECT_EQ(agent->terminate().code, 0);
}

TEST(StoreTrouble, jump_readOnly_worksAndStoresOnceWritingIsAllowed) {
    enterPrivateMounts();
    Desk desk;
    auto mount = MountPoint::readOnly(desk.home().configuration());
    const auto agent = desk.startAgent();
    expectHyperDJumps(desk);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(onMain)) << "remembered without the store; " << desk.pointer().position();
    mount.allowWriting();
    EXPECT_EQ(desk.defaults().typeOf("rememberedPositions"), std::nullopt) << "writing was really refused";
    EXPECT_EQ(desk.defaults().read("animation"), "none") << "nothing was deleted";
    desk.keyboard().type(hyper(keys::s));
    EXPECT_TRUE(waitUntil([&] { return hasBothKeys(desk); })) << "the next change writes all that failed";
}

TEST(StoreTrouble, launch_diskFull_works) {
    enterPrivateMounts();
    Desk desk;
    const auto mount = MountPoint::ofSize(desk.home().configuration(), smallDisk);
    MountPoint::fill(desk.home().configuration() / "filling");
    const auto agent = desk.startAgent();
    expectHyperDJumps(desk);
    EXPECT_TRUE(agent->isRunning());
}

TEST(StoreTrouble, jump_diskFull_worksAndStoresOnceThereIsRoom) {
    enterPrivateMounts();
    Desk desk;
    const auto mount = MountPoint::ofSize(desk.home().configuration(), smallDisk);
    desk.defaults().writeText("animation", "none");
    desk.defaults().writeText("mode", "automatic");
    const auto agent = desk.startAgent();
    const auto filling = desk.home().configuration() / "filling";
    MountPoint::fill(filling);
    // A few pages may be there already, so the store is driven until a write really fails.
    expectHyperDJumps(desk);
    for (int jump = 0; jump < 300; ++jump) {
        desk.keyboard().type(hyper(keys::d));
    }
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor(onMain)) << desk.pointer().position();
    desk.pointer().moveTo({333, 222});
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    const auto isStored = [&] {
        return desk.defaults().read("rememberedPositions").value_or("").find(R"("x":333,)") != std::string::npos;
    };
    ASSERT_FALSE(isStored()) << "the disk was really full";
    fs::remove(filling);
    desk.keyboard().type(hyper(keys::s));
    EXPECT_TRUE(waitUntil([&] { return hasBothKeys(desk) && isStored(); })) << "the next change writes all that failed";
    EXPECT_EQ(desk.defaults().read("mode"), "automatic") << "nothing was lost";
    EXPECT_EQ(agent->terminate().code, 0);
}

TEST(StoreTrouble, launch_unusableValues_builtInValuesApply) {
    Desk desk;
    desk.defaults().writeText("mode", "MANUAL");
    desk.defaults().writeData("savedPoints", "[{");
    desk.defaults().writeData("rememberedPositions", "\xFF\xFE");
    desk.defaults().writeInteger("primaryHotKeyCode", 7);
    const auto agent = desk.startAgent();
    expectHyperDJumps(desk);
}

TEST(StoreTrouble, launch_negativeKeyCode_endsWithAFatalError) {
    Desk desk;
    desk.defaults().writeInteger("primaryHotKeyCode", -1);
    desk.defaults().writeInteger("primaryHotKeyModifiers", 6912);
    const auto agent = desk.startProgram();
    EXPECT_EQ(agent->waitForExit(), (ExitStatus{.code = std::nullopt, .signal = SIGABRT}));
    EXPECT_NE(agent->standardError(), "");
}

TEST(StoreTrouble, launch_oneDisplayUnderTwoNames_endsWithAFatalError) {
    Desk desk;
    desk.defaults().writeData("rememberedPositions", R"({"5":{"x":1,"y":2},"05":{"x":3,"y":4}})");
    const auto agent = desk.startProgram();
    EXPECT_EQ(agent->waitForExit(), (ExitStatus{.code = std::nullopt, .signal = SIGABRT}));
    EXPECT_NE(agent->standardError().find("Duplicate values for key: '5'"), std::string::npos)
        << agent->standardError();
}

TEST(StoreTrouble, launch_noStore_createsItForItsOwnerOnly) {
    Desk desk;
    fs::remove_all(desk.home().storeFile().parent_path());
    const auto agent = desk.startAgent();
    expectHyperDJumps(desk);
    ASSERT_TRUE(waitUntil([&] { return desk.defaults().typeOf("rememberedPositions") == "blob"; }));
    EXPECT_EQ(fs::status(desk.home().storeFile()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(desk.home().storeFile().parent_path()).permissions(), fs::perms::owner_all);
}

}  // namespace
}  // namespace vantrel::desk
