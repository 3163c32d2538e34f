#include "benchmarks/wayland/LabwcJumpDesk.hpp"

#include <unistd.h>

#include <filesystem>
#include <stdexcept>

#include "tests/desk/wayland/support/LabwcDesk.hpp"

namespace vantrel::bench {

using namespace desk;

namespace {

/// What the agent stores is its user's.
void giveTo(uid_t user, const std::filesystem::path& directory) {
    bool isDone = chown(directory.c_str(), user, user) == 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
        isDone = lchown(entry.path().c_str(), user, user) == 0 && isDone;
    }
    if (!isDone) {
        throw std::runtime_error("cannot give a home to the compositor's user");
    }
}

}  // namespace

LabwcJumpDesk::LabwcJumpDesk(Carrier carrier) : agent_(VANTREL_BENCH_AGENT), knock_(VANTREL_BENCH_LABWC_KNOCK) {
    const bool isFloor = carrier == Carrier::floor;
    const std::string binding =
        isFloor ? knock_.binding("W-C-A-S-d", "") : agent_.binding("W-C-A-S-d", "vantrel://teleport");
    desk_ =
        std::make_unique<SeatJumpDesk>(std::make_unique<LabwcDesk>(LabwcOptions{
                                           .outputs = WaylandDesk::twoOutputs(), .keyboard = binding, .autostart = {}}),
                                       SeatJumpDesk::Act::onRelease);
    WaylandDesk& session = desk_->session();
    ChildProcessOptions options;
    options.arguments = {isFloor ? VANTREL_BENCH_LABWC_FLOOR : agent_.path().native()};
    options.environment = session.environment();
    // The agent takes URLs from its own user alone.
    if (const uid_t user = CompositorProcess::user(); !isFloor && user != geteuid()) {
        options.user = user;
        giveTo(user, session.home().path());
    }
    // A press before the agent is there would have what it starts become the agent.
    desk_->startCarrier(options, [&] { return isFloor || session.isServed(); });
}

}  // namespace vantrel::bench
