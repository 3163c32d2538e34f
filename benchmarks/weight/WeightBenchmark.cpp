// Weighs the resting agent on each kind of desktop, and what draws on the screen for it.
#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "benchmarks/support/Arguments.hpp"
#include "benchmarks/support/Markdown.hpp"
#include "benchmarks/weight/ProcessMemory.hpp"
#include "tests/desk/status/ItemProcess.hpp"
#include "tests/desk/status/ScreenWindows.hpp"
#include "tests/desk/status/TestPanel.hpp"
#include "tests/desk/support/Desk.hpp"
#include "tests/desk/support/ProcessActivity.hpp"

namespace vantrel::desk {
namespace {

using bench::memoryOf;
using bench::numberText;
using bench::printTableHead;
using bench::printTableRow;
using bench::ProcessMemory;

using std::chrono::seconds;

// The start, the memory that it gives back, and the end of threads that GLib keeps for fifteen seconds.
constexpr seconds settlingTime(25);
constexpr seconds restingTime(30);

std::vector<std::string> weightCells(const char* title, pid_t process) {
    const ProcessMemory memory = memoryOf(process);
    return {title, numberText(memory.resident, 1) + " MB", numberText(memory.privateDirty, 1) + " MB",
            numberText(memory.proportional, 1) + " MB"};
}

void printRest(const char* title, pid_t process) {
    auto cells = weightCells(title, process);
    const auto before = voluntarySwitches(process);
    std::this_thread::sleep_for(restingTime);
    cells.push_back(std::to_string(voluntarySwitches(process) - before) + " times");
    printTableRow(cells);
}

void serveBus(seconds time) {
    waitOnBus([] { return false; }, time);
}

void weighBesidePanel() {
    Desk desk;
    TestPanel panel(desk.bus().address());
    const auto agent = desk.startAgent();
    serveBus(settlingTime);
    printRest("with a StatusNotifier panel", agent->processId());
    for (int count = 0; count < 20; ++count) {
        desk.keyboard().type(hyper(keys::s));
        desk.keyboard().type(hyper(keys::d));
        serveBus(seconds(0));
    }
    waitOnBus([&] { return !overlayOf(agent->processId()); });
    serveBus(settlingTime);
    printRest("the same after 20 jumps, saves and messages", agent->processId());
}

void weighWithoutPanel() {
    Desk desk;
    const auto agent = desk.startAgent();
    std::this_thread::sleep_for(settlingTime);
    printRest("without any panel", agent->processId());
}

void weighInTray() {
    Desk desk({.hasSessionBus = true, .hasWindowManager = true});
    const std::filesystem::path configuration = desk.home().path() / "tint2rc";
    std::ofstream(configuration) << "panel_items = S\npanel_size = 100% 30\n";
    ChildProcessOptions options;
    options.arguments = {"tint2", "-c", configuration.native()};
    options.environment = desk.environment();
    ChildProcess tint2(options);
    const auto agent = desk.startAgent();
    std::this_thread::sleep_for(settlingTime);
    const bool isDocked = !visibleWindows(desk.connection(), "vantrel").empty();
    printRest(isDocked ? "in tint2's tray" : "NOT in tint2's tray", agent->processId());
}

/// The time from the press of Hyper + S to the text on the screen, in milliseconds.
double timeToText(Desk& desk) {
    const auto start = std::chrono::steady_clock::now();
    desk.keyboard().type(hyper(keys::s));
    waitUntil([&] { return !visibleWindows(desk.connection(), "vantrel-overlay").empty(); });
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void weighText() {
    Desk desk;
    const auto agent = desk.startAgent();
    const double first = timeToText(desk);
    const auto overlay = overlayOf(agent->processId());
    if (overlay) {
        auto cells = weightCells("vantrel-overlay, while a message stands", *overlay);
        cells.emplace_back("");
        printTableRow(cells);
    }
    waitUntil([&] { return visibleWindows(desk.connection(), "vantrel-overlay").empty(); });
    const double second = timeToText(desk);
    std::printf(
        "\nFrom the key to the message on the screen: %.0f ms; the next, while vantrel-overlay lingers, %.0f ms.\n",
        first, second);
    waitUntil([&] { return !overlayOf(agent->processId()); });
    std::printf("vantrel-overlay, five seconds later: gone.\n");
}

void run() {
    printTableHead({"Desktop", "resident", "private dirty", "proportional", "woken in 30 s"});
    weighBesidePanel();
    weighWithoutPanel();
    weighInTray();
    weighText();
}

}  // namespace
}  // namespace vantrel::desk

int main(int count, char** arguments) {
    return vantrel::bench::runBenchmark(count, arguments, {}, [](const auto&) { vantrel::desk::run(); });
}
