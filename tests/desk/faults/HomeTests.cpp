// Sessions without a home directory: nothing can be stored, everything else works.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

struct HomelessCase {
    const char* name;
    std::optional<const char*> home;
};

class NoHome : public testing::TestWithParam<HomelessCase> {};

TEST_P(NoHome, agent_worksAndKeepsWhatItIsTold) {
    Desk desk;
    for (const char* const variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"}) {
        desk.environment().unset(variable);
    }
    if (GetParam().home) {
        desk.environment().set("HOME", *GetParam().home);
    }
    const auto agent = desk.startAgent();
    // Nothing is stored, so the pointer glides.
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    ASSERT_TRUE(desk.pointer().waitFor(centreOfSecond)) << desk.pointer().position();
    desk.keyboard().type(hyper(keys::s));
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(onMain)) << "remembered all the same; " << desk.pointer().position();
    desk.keyboard().type(controlOptionCommand(keys::m));
    EXPECT_TRUE(desk.pointer().waitFor(centreOfSecond)) << "saved all the same; " << desk.pointer().position();
    const std::string told = agent->standardError();
    EXPECT_LE(std::count(told.begin(), told.end(), '\n'), 1) << told;
    EXPECT_EQ(agent->terminate(), ordinaryEnd);
}

INSTANTIATE_TEST_SUITE_P(Homes, NoHome,
                         testing::Values(HomelessCase{"none", std::nullopt},
                                         HomelessCase{"notThere", "/dev/null/nobody"}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vantrel::desk
