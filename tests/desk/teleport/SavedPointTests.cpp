// Saving the pointer's position and cycling through what was saved.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <regex>

#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/TwoDisplays.hpp"

namespace vantrel::desk {
namespace {

constexpr MainPoint first{.x = 100, .y = 200};
constexpr MainPoint second{.x = -300, .y = 400};

std::size_t storedPointCount(const Desk& desk) {
    const auto stored = nlohmann::json::parse(desk.defaults().read("savedPoints").value_or(""), nullptr, false);
    return stored.is_array() ? stored.size() : 0;
}

/// Saves the position with the hot key and waits until it is in the store.
void save(Desk& desk, MainPoint point) {
    const auto count = storedPointCount(desk);
    desk.pointer().moveTo(point);
    desk.keyboard().type(hyper(keys::s));
    ASSERT_TRUE(waitUntil([&] { return storedPointCount(desk) == count + 1; }));
}

TEST(SavedPoint, nextSavedPoint_twoSaved_cyclesFromTheLastSaved) {
    Desk desk;
    const auto agent = desk.startAgent();
    save(desk, first);
    save(desk, second);
    desk.pointer().moveTo(onMain);
    for (const auto expected : {second, first, second}) {
        desk.keyboard().type(controlOptionCommand(keys::m));
        EXPECT_TRUE(desk.pointer().waitFor(expected)) << desk.pointer().position();
    }
}

TEST(SavedPoint, hyperS_twoSaved_storeHoldsTheStoredForm) {
    Desk desk;
    const auto agent = desk.startAgent();
    save(desk, first);
    save(desk, second);
    EXPECT_EQ(desk.defaults().typeOf("savedPoints"), "blob");
    const std::string uuid = "[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}";
    const std::regex form(
        R"(\[\{"id":")" + uuid + R"(","name":"Point 1","point":\{"x":100,"y":200\},"displayID":([1-9][0-9]*)\},)" +
        R"(\{"id":")" + uuid + R"(","name":"Point 2","point":\{"x":-300,"y":400\},"displayID":([1-9][0-9]*)\}\])");
    const auto stored = desk.defaults().read("savedPoints").value_or("");
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(stored, parts, form)) << stored;
    EXPECT_NE(parts[1], parts[2]) << "each display has its own identifier";
}

TEST(SavedPoint, nextSavedPoint_afterRestart_beginsWithTheFirst) {
    Desk desk;
    {
        const auto agent = desk.startAgent();
        save(desk, first);
        save(desk, second);
        EXPECT_EQ(agent->terminate().code, 0);
    }
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(controlOptionCommand(keys::m));
    EXPECT_TRUE(desk.pointer().waitFor(first)) << desk.pointer().position();
}

TEST(SavedPoint, hyperD_manualMode_goesToSavedPoints) {
    Desk desk;
    desk.defaults().writeText("mode", "manual");
    const auto agent = desk.startAgent();
    save(desk, first);
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().waitFor(first)) << desk.pointer().position();
}

TEST(SavedPoint, nextSavedPoint_noneSaved_pointerStays) {
    Desk desk;
    const auto agent = desk.startAgent();
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(controlOptionCommand(keys::m));
    EXPECT_TRUE(desk.pointer().staysAt(onMain));
}

}  // namespace
}  // namespace vantrel::desk
