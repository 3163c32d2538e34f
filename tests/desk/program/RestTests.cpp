// What the agent does before it sleeps.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include "tests/desk/program/ApplicationOnBus.hpp"
#include "tests/desk/support/Desk.hpp"

namespace vantrel::desk {
namespace {

constexpr MainPoint onMain{.x = 700, .y = 500};

/// The store rests ten seconds after the last change.
constexpr std::chrono::seconds timeToRest(60);

/// So many kB of the code of a library are counted as the process's memory.
int residentCode(pid_t process, const std::string& library) {
    std::ifstream smaps("/proc/" + std::to_string(process) + "/smaps");
    int resident = 0;
    bool isItsCode = false;
    for (std::string line; std::getline(smaps, line);) {
        std::istringstream words(line);
        std::string first;
        std::string second;
        words >> first >> second;
        if (first.find('-') != std::string::npos) {
            isItsCode = second == "r-xp" && line.find('/' + library) != std::string::npos;
        } else if (isItsCode && first == "Rss:") {
            resident += std::stoi(second);
        }
    }
    return resident;
}

TEST(Rest, afterTheStartAndAfterAUse_memoryIsGivenBack) {
    // Serves messages of the bus, and is of no use to a key press.
    const std::string library = "libgio-2.0";
    Desk desk;
    const auto agent = desk.startAgent();
    ApplicationOnBus application(desk.bus().address());
    ASSERT_TRUE(waitUntil([&] { return !application.owner().empty(); }));
    const auto isInMemory = [&] { return residentCode(agent->processId(), library) > 0; };
    const auto waitUntilGivenBack = [&] {
        return waitUntil(
            [&] {
                // To look is dear, and a test that only looks would be a busy program beside the others.
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
                return !isInMemory();
            },
            timeToRest);
    };
    EXPECT_TRUE(isInMemory());
    EXPECT_TRUE(waitUntilGivenBack());
    desk.pointer().moveTo(onMain);
    EXPECT_EQ(application.open({"vantrel:next"}), "");
    ASSERT_TRUE(desk.pointer().catchDeparture(onMain));
    EXPECT_TRUE(isInMemory());
    EXPECT_TRUE(waitUntilGivenBack());
    desk.pointer().moveTo(onMain);
    desk.keyboard().type(hyper(keys::d));
    EXPECT_TRUE(desk.pointer().catchDeparture(onMain));
}

}  // namespace
}  // namespace vantrel::desk
