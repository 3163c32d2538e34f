// From the choice of "Settings..." in the menu to the settings window's first picture on the screen: for the first
// opening, which starts the program that draws it, and for later ones.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "benchmarks/weight/ProcessMemory.hpp"
#include "tests/desk/status/ItemProcess.hpp"
#include "tests/desk/status/PanelItem.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"

namespace vantrel::desk {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int settingsRow = 11;
constexpr int rowCount = 16;
constexpr int openingsPerAgent = 5;
// The window comes to the middle of this display.
constexpr MainPoint middleOfMain{756, 491};

struct Times {
    std::vector<double> first;
    std::vector<double> later;
};

/// The colour of a pixel of the screen, whoever drew it.
std::uint32_t colorAt(Desk& desk, RootPoint place) {
    xcb_connection_t* const server = desk.connection().get();
    const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        server,
        xcb_get_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, desk.connection().root(), static_cast<std::int16_t>(place.x),
                      static_cast<std::int16_t>(place.y), 1, 1, ~0U),
        nullptr));
    if (!reply) {
        throw std::runtime_error("the screen cannot be read");
    }
    constexpr std::uint32_t withoutUnusedByte = 0xFFFFFF;
    return *reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(reply.get())) & withoutUnusedByte;
}

/// An agent with a panel that shows its menu.
class SettingsOpener {
  public:
    SettingsOpener() {
        desk_.pointer().moveTo(middleOfMain);
        agent_ = desk_.startAgent();
        if (!panel_.waitForRegistrations(1)) {
            throw std::runtime_error("the agent's item does not register");
        }
        item_ = std::make_unique<PanelItem>(panel_.bus(), panel_.items().back());
        if (!waitOnBus([this] { return item_->rows().size() == rowCount; })) {
            throw std::runtime_error("the agent's menu does not come");
        }
        emptyColor_ = colorAt(desk_, middle_);
    }

    double open() {
        waitUntilAtRest(agent_->processId());
        const auto start = std::chrono::steady_clock::now();
        item_->click(settingsRow);
        while (colorAt(desk_, middle_) == emptyColor_) {
            if (std::chrono::steady_clock::now() - start > generousDeadline) {
                throw std::runtime_error("the window does not come: " + agent_->standardError());
            }
        }
        return Milliseconds(std::chrono::steady_clock::now() - start).count();
    }

    void close() {
        // Once it has the keyboard.
        const bool isClosed = waitUntil([this] {
            desk_.keyboard().type({"ESC"});
            return colorAt(desk_, middle_) == emptyColor_;
        });
        if (!isClosed) {
            throw std::runtime_error("the window does not close");
        }
    }

    /// Whether a time comes within two minutes in which nothing wakes the agent.
    bool rests(std::chrono::seconds time) {
        return waitUntilAtRest(agent_->processId(), time, std::chrono::minutes(2));
    }

    /// Waits until the program that draws the window has gone, a minute after it was closed.
    bool waitUntilItsProgramIsGone() {
        return waitUntil([this] { return !helperOf(agent_->processId(), "vantrel-settings"); },
                         std::chrono::minutes(2));
    }

    bench::ProcessMemory agentsMemory() { return bench::memoryOf(agent_->processId()); }

  private:
    Desk desk_{{.hasSessionBus = true, .hasWindowManager = true}};
    TestPanel panel_{desk_.bus().address()};
    std::unique_ptr<AgentProcess> agent_;
    std::unique_ptr<PanelItem> item_;
    RootPoint middle_ = desk_.layout().toRoot(middleOfMain);
    std::uint32_t emptyColor_ = 0;
};

void measure(Times& times) {
    SettingsOpener opener;
    times.first.push_back(opener.open());
    for (int count = 0; count < openingsPerAgent; ++count) {
        opener.close();
        times.later.push_back(opener.open());
    }
}

void print(const char* title, std::vector<double> times) {
    std::sort(times.begin(), times.end());
    std::printf("%-16s p50 %6.1f ms   least %6.1f ms   most %6.1f ms   of %zu\n", title, times.at(times.size() / 2),
                times.front(), times.back(), times.size());
}

void print(const char* title, const bench::ProcessMemory& memory) {
    std::printf("%-16s private dirty %.2f MB   proportional %.2f MB   resident %.2f MB\n", title, memory.privateDirty,
                memory.proportional, memory.resident);
}

}  // namespace
}  // namespace vantrel::desk

int main(int argumentCount, char** arguments) {
    using namespace vantrel::desk;
    try {
        const int agents = argumentCount > 1 ? std::stoi(arguments[1]) : 10;
        // Files into memory: the first opening after a login is the disk's affair.
        Times warmUp;
        measure(warmUp);
        Times times;
        for (int count = 0; count < agents; ++count) {
            measure(times);
        }
        print("first opening", times.first);
        print("later openings", times.later);
        SettingsOpener opener;
        print("agent, before", opener.agentsMemory());
        opener.open();
        opener.close();
        if (!opener.waitUntilItsProgramIsGone()) {
            throw std::runtime_error("the program that draws the window stays");
        }
        constexpr std::chrono::seconds resting(30);
        const bool rests = opener.rests(resting);
        print("agent, after", opener.agentsMemory());
        std::printf("after closing    %s for %ld s\n", rests ? "nothing wakes the agent" : "NOT at rest",
                    static_cast<long>(resting.count()));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vantrel-bench-settings: %s\n", error.what());
        return 1;
    }
    return 0;
}
