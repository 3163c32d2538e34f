#include "Vantrel/Backends/Wayland/WaylandConnection.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "tests/unit/wayland/ScriptedCompositor.hpp"

namespace vantrel::wayland {
namespace {

TEST(WaylandConnection, waitFor_compositorNeverStopsTalking_endsAfterTheDeadline) {
    const ScriptedCompositor compositor;
    std::string error;
    const auto connection = WaylandConnection::open(error);
    ASSERT_TRUE(connection) << error;
    constexpr std::uint32_t deleteId = 1;
    std::uint32_t said = 0;
    const auto talk = [&] {
        constexpr std::uint32_t wayBeyondTheDeadline = 10'000;
        if (++said < wayBeyondTheDeadline) {
            compositor.say(ScriptedCompositor::display, deleteId, {said});
        }
        return false;
    };
    EXPECT_FALSE(connection->waitFor(talk, std::chrono::steady_clock::now()));
    EXPECT_LT(said, 1'000U);
    EXPECT_FALSE(connection->isLost());
}

}  // namespace
}  // namespace vantrel::wayland
