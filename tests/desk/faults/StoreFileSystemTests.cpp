// Homes on file systems that lack what a write-ahead log needs, as some network file systems do: another journal
// serves, and a person notices nothing.
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

/// What the file lacks, as vantrel-test-refusal names it.
class StoreFileSystem : public testing::TestWithParam<const char*> {
  protected:
    /// Whether the file's own header says that a write-ahead log goes with it.
    [[nodiscard]] bool isMarkedForLog() {
        constexpr std::streamoff formatToWrite = 18;
        std::ifstream file(desk_.home().storeFile(), std::ios::binary);
        file.seekg(formatToWrite);
        return file.get() == 2;
    }

    /// Whether the value of the key has the text in it. To be asked only when the agent has arrived somewhere, so that
    /// it is not just writing: without locks nobody keeps a reader out.
    [[nodiscard]] bool isStored(const std::string& key, const std::string& text) {
        return desk_.defaults().read(key).value_or("").find(text) != std::string::npos;
    }

    /// An ordinary agent stores a point and is killed, so that only the log has it.
    void savePointInTheLog() {
        const auto agent = desk_.startAgent();
        desk_.pointer().moveTo(elsewhereOnMain);
        desk_.keyboard().type(hyper(keys::s));
        ASSERT_TRUE(waitUntil([&] { return isStored("savedPoints", R"("x":300,)"); }));
        agent->kill();
        ASSERT_GT(std::filesystem::file_size(desk_.home().storeFile().native() + "-wal"), 0U);
    }

    /// Jumps from a place on the main display to the remembered one on the second.
    void expectJumpToRememberedPlace() {
        desk_.pointer().moveTo(elsewhereOnMain);
        desk_.keyboard().type(hyper(keys::d));
        EXPECT_TRUE(desk_.pointer().waitFor(onSecond)) << desk_.pointer().position();
    }

    Desk desk_;
};

TEST_P(StoreFileSystem, jumps_areStoredAndReadByTheNextStart) {
    ASSERT_NO_FATAL_FAILURE(savePointInTheLog());
    desk_.wrapAgent({VANTREL_TEST_REFUSAL, GetParam()});
    {
        const auto agent = desk_.startAgent();
        desk_.pointer().moveTo(onMain);
        desk_.keyboard().type(hyper(keys::d));
        ASSERT_TRUE(desk_.pointer().waitFor(centreOfSecond)) << desk_.pointer().position();
        EXPECT_FALSE(isMarkedForLog()) << "the file system really lacks something";
        EXPECT_TRUE(isStored("rememberedPositions", R"("x":700,)")) << "before the pointer moved";
        desk_.pointer().moveTo(onSecond);
        desk_.keyboard().type(hyper(keys::s));
        desk_.keyboard().type(hyper(keys::d));
        ASSERT_TRUE(desk_.pointer().waitFor(onMain)) << desk_.pointer().position();
        EXPECT_TRUE(isStored("savedPoints", R"("x":300,)")) << "what the log held was read";
        EXPECT_TRUE(isStored("savedPoints", R"("x":-400,)"));
        EXPECT_EQ(agent->kill(), (ExitStatus{.code = std::nullopt, .signal = SIGKILL}));
    }
    {
        const auto agent = desk_.startAgent();
        expectJumpToRememberedPlace();
        EXPECT_EQ(agent->terminate(), ordinaryEnd);
    }
    EXPECT_FALSE(isMarkedForLog());
    desk_.wrapAgent({});
    const auto agent = desk_.startAgent();
    expectJumpToRememberedPlace();
    EXPECT_TRUE(isMarkedForLog()) << "where nothing lacks, the log serves again";
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
    EXPECT_EQ(agent->standardError(), "") << "of all four";
}

INSTANTIATE_TEST_SUITE_P(Without, StoreFileSystem, testing::Values("locks", "sharedMemory"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace vantrel::desk
