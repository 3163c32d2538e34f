#include "tests/soak/JumpSoak.hpp"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "tests/soak/Pixels.hpp"
#include "tests/soak/RandomDisplays.hpp"

namespace vantrel::soak {

namespace {

using desk::MainPoint;

constexpr int jumpsADisturbance = 30;
constexpr int jumpsAnIntegrityCheck = 1000;
constexpr int weighingsARun = 5;
/// Fewer tell nothing about memory, and weighing takes its time.
constexpr int leastJumpsToWeigh = 10000;
/// The agent's helpers and GLib's spare threads go within fifteen seconds of their last use.
constexpr std::chrono::seconds settlingTime(16);

std::string textOf(MainPoint point) {
    std::ostringstream text;
    text << point;
    return text.str();
}

MainPoint storedPoint(const nlohmann::json& json) {
    return {.x = json.at("x"), .y = json.at("y")};
}

double share(std::vector<double> values, double part) {
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
}

}  // namespace

JumpSoak::JumpSoak(const JumpSoakOptions& options)
    : options_(options), random_(options.seed), shownDisplays_(desk::DisplayLayout::twoDisplays()) {
    foresight_.see(shownDisplays_);
    keepNothingFreed(desk_.desk().environment());
    desk_.wrapAgent(options.agentWrapper);
    desk_.startAgent();
}

void JumpSoak::run() {
    disturbInEveryWay();
    const int jumpsAWeighing = std::max(1, options_.jumps / weighingsARun);
    for (int jump = 1; jump <= options_.jumps; ++jump) {
        try {
            if (random_.onceIn(jumpsADisturbance)) {
                disturb();
            }
            jumpOnce();
            if (jump % jumpsAnIntegrityCheck == 0) {
                desk_.store().checkIntegrity();
            }
            if (isWeighed() && jump % jumpsAWeighing == 0) {
                weigh();
            }
        } catch (const std::exception& error) {
            throw std::runtime_error("jump " + std::to_string(jump) + ": " + error.what() + "\n" +
                                     desk_.agent().standardError());
        }
    }
    desk_.store().checkIntegrity();
    const std::string complaints = desk_.agent().standardError();
    desk_.endAgent();
    printSummary();
    if (options_.agentWrapper.empty() && !complaints.empty()) {
        throw std::runtime_error("the agent complains: " + complaints);
    }
    weighings_.checkNothingGrows();
}

void JumpSoak::jumpOnce() {
    const Side side = random_.onceIn(4) ? Side::previous : Side::next;
    const MainPoint departure = placeToLeave(side);
    const Landing landing = foresight_.jump(pointOf(departure), side);
    const auto start = Clock::now();
    request(side);
    awaitPointerAt(pixelOf(landing.point));
    times_.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    if (!isInsideMargin(desk_.desk().pointer().position(), landing.display)) {
        throw std::runtime_error("the pointer is nearer to the edge than it may be");
    }
    checkStoreHolds(departure);
    SoakDesk::serveBus();
}

MainPoint JumpSoak::placeToLeave(Side side) {
    desk::Pointer& pointer = desk_.desk().pointer();
    MainPoint place = pointer.position();
    // A jump that ends where it begins could not be told from none.
    while (random_.onceIn(2) || pixelOf(foresight_.landingOf(pointOf(place), side).point) == place) {
        place = randomPlace();
    }
    if (place != pointer.position()) {
        pointer.moveTo(place);
    }
    return place;
}

MainPoint JumpSoak::randomPlace() {
    const auto& bounds = random_.oneOf(foresight_.displays()).bounds;
    MainPoint place{.x = random_.between(bounds.x, bounds.x + bounds.width - 1),
                    .y = random_.between(bounds.y, bounds.y + bounds.height - 1)};
    if (random_.onceIn(3)) {
        place.x = bounds.x + (random_.onceIn(2) ? 0 : bounds.width - 1);
    }
    return place;
}

void JumpSoak::request(Side side) {
    const bool isNext = side == Side::next;
    if (random_.onceIn(50)) {
        desk_.click(isNext ? MenuRow::nextDisplay : MenuRow::previousDisplay);
    } else if (isNext && random_.onceIn(2)) {
        desk_.typist().type(desk::hyper(desk::keys::d));
    } else {
        desk_.typist().type(desk::controlOptionCommand(isNext ? desk::keys::rightArrow : desk::keys::leftArrow));
    }
}

void JumpSoak::awaitPointerAt(MainPoint point) {
    constexpr int quickLooks = 200;
    for (int look = 0; look < quickLooks; ++look) {
        if (desk_.desk().pointer().position() == point) {
            return;
        }
    }
    try {
        desk_.await("the pointer at " + textOf(point), [&] { return desk_.desk().pointer().position() == point; });
    } catch (const std::exception& error) {
        throw std::runtime_error(error.what() + (", it is at " + textOf(desk_.desk().pointer().position())));
    }
}

void JumpSoak::checkStoreHolds(MainPoint departure) {
    const auto stored = nlohmann::json::parse(desk_.store().read("rememberedPositions"));
    const bool isStored = std::any_of(stored.begin(), stored.end(),
                                      [&](const nlohmann::json& point) { return storedPoint(point) == departure; });
    if (!isStored) {
        throw std::runtime_error("the pointer has moved, but the store does not know that it left " +
                                 textOf(departure) + ": " + stored.dump());
    }
    if (stored.size() != foresight_.rememberedCount()) {
        throw std::runtime_error("the store holds positions of other displays: " + stored.dump());
    }
}

bool JumpSoak::isWeighed() const {
    // A wrapper's memory is not the agent's.
    return options_.jumps >= leastJumpsToWeigh && options_.agentWrapper.empty();
}

void JumpSoak::weigh() {
    if (desk_.isSettingsOpen()) {
        desk_.closeSettings();
    }
    if (!points_.empty()) {
        clearPoints();
    }
    desk::waitOnBus([] { return false; }, settlingTime);
    const ProcessWeight weight = weightOf(desk_.agent().processId());
    weighings_.add(weight);
    std::printf("    after %6zu jumps: %ld KiB private dirty, %ld open descriptors\n", times_.size(),
                weight.privateDirtyKibibytes, weight.openDescriptors);
    std::fflush(stdout);
}

bool JumpSoak::isShown(MainPoint point) const {
    return std::any_of(shownDisplays_.begin(), shownDisplays_.end(),
                       [&](const desk::PlacedDisplay& display) { return holds(display.bounds, pointOf(point)); });
}

void JumpSoak::printSummary() const {
    std::printf(
        "    %zu jumps, %d disturbances, %d URLs: every jump landed where it must, every departure was stored\n",
        times_.size(), disturbances_, urls_);
    std::printf("    from the press to the pointer: p50 %.2f ms, p99 %.2f ms, longest %.2f ms\n", share(times_, 0.5),
                share(times_, 0.99), share(times_, 1));
    if (!weighings_.all().empty()) {
        const long first = weighings_.all().front().privateDirtyKibibytes;
        const long last = weighings_.all().back().privateDirtyKibibytes;
        std::printf("    private dirty memory: %ld KiB after warming up, %ld KiB at the end (%+.1f %%)\n", first, last,
                    100.0 * (static_cast<double>(last) / static_cast<double>(first) - 1));
    }
}

}  // namespace vantrel::soak
