#include "Vantrel/Backends/Wayland/Outputs.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/unit/wayland/ScriptedCompositor.hpp"

namespace vantrel::wayland {
namespace {

bool releases(const std::vector<ScriptedCompositor::Request>& requests, std::uint32_t output) {
    return std::any_of(requests.begin(), requests.end(), [output](const auto& request) {
        return request.object == output && request.opcode == WL_OUTPUT_RELEASE;
    });
}

TEST(Outputs, current_outputGoes_handleStaysAsLongAsItIsHeld) {
    constexpr std::uint32_t outputName = 7;
    const ScriptedCompositor compositor;
    std::string error;
    const auto connection = WaylandConnection::open(error);
    ASSERT_TRUE(connection) << error;
    Registry registry(*connection);
    compositor.offer(1, zxdg_output_manager_v1_interface.name, 3);
    compositor.offer(outputName, wl_output_interface.name, 4);
    connection->drain();
    const auto manager = registry.bindFirst<zxdg_output_manager_v1>(zxdg_output_manager_v1_interface, 3);
    Outputs outputs(registry, *manager);
    connection->flush();
    const auto bound = compositor.heard();
    ASSERT_EQ(bound.back().opcode, static_cast<std::uint32_t>(ZXDG_OUTPUT_MANAGER_V1_GET_XDG_OUTPUT));
    const std::uint32_t logical = bound.back().arguments[0];
    const std::uint32_t output = bound.back().arguments[1];
    constexpr std::uint32_t logicalSize = 1;
    constexpr std::uint32_t done = 2;
    compositor.say(logical, logicalSize, {800, 600});
    compositor.say(output, done, {});
    connection->drain();
    auto held = outputs.current();
    ASSERT_EQ(held.size(), 1U);

    constexpr std::uint32_t globalRemove = 1;
    compositor.say(ScriptedCompositor::registry, globalRemove, {outputName});
    connection->drain();
    connection->flush();
    EXPECT_TRUE(outputs.current().empty());
    EXPECT_FALSE(releases(compositor.heard(), output)) << "whoever has read the outputs may still send to it";

    held.clear();
    connection->flush();
    EXPECT_TRUE(releases(compositor.heard(), output));
}

}  // namespace
}  // namespace vantrel::wayland
