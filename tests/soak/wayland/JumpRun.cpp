#include "tests/soak/wayland/JumpRun.hpp"

#include <cstdio>
#include <stdexcept>

namespace vantrel::soak {

namespace {

using desk::LayoutPoint;

constexpr int jumpsBetweenDisturbances = 20;
constexpr int jumpsBetweenChecks = 1000;
constexpr int weighingsOfARun = 5;
/// Fewer tell nothing about memory, and weighing takes its time.
constexpr int leastJumpsForWeighing = 4000;
/// The agent's helpers and GLib's spare threads go within fifteen seconds of their last use.
constexpr std::chrono::seconds restBeforeWeighing(16);
/// Sway's keys are bound anew then, for which a keymap is read that is large for a moment. How the heap lies afterwards
/// is chance; it has found its size after some dozens.
constexpr int reloadsToWarmUp = 100;
/// How long hot keys may be away after a configuration was read.
constexpr std::chrono::seconds longestRestoring(30);

std::uint64_t seedOfRound(std::uint64_t seed, int round) {
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15U;
    return seed + spread * static_cast<std::uint64_t>(round);
}

}  // namespace

JumpRun::JumpRun(const std::string& session, std::uint64_t seed, int jumps)
    : name_(session), seed_(seed), jumps_(jumps), random_(seed), session_(makeSession(session)), jumper_(*session_) {
    session_->startAgent();
}

bool JumpRun::isWeighed() const {
    return jumps_ >= leastJumpsForWeighing;
}

void JumpRun::warmUp() {
    for (int time = 0; time < reloadsToWarmUp; ++time) {
        reconfigure();
        // By URLs, which need no hot keys, until these are there again.
        for (const Side side : {Side::next, Side::previous, Side::next, Side::previous}) {
            count(jumper_.jump(bringToNewPlace(side), side, Request::url));
        }
    }
}

void JumpRun::run() {
    const int jumpsBetweenWeighings = std::max(1, jumps_ / weighingsOfARun);
    if (isWeighed()) {
        warmUp();
    }
    for (int number = 1; number <= jumps_; ++number) {
        try {
            round(number);
            if (number % jumpsBetweenChecks == 0) {
                jumper_.store().checkIntegrity();
            }
            if (isWeighed() && number % jumpsBetweenWeighings == 0) {
                weigh();
            }
        } catch (const std::exception& error) {
            throw std::runtime_error(name_ + ", jump " + std::to_string(number) + ": " + error.what() + "\n" +
                                     session_->agent().standardError());
        }
    }
    jumper_.store().checkIntegrity();
    const std::string complaints = session_->agent().standardError();
    session_->endAgent();
    print();
    session_->checkNoHotKeysRemain();
    if (!complaints.empty()) {
        throw std::runtime_error("the agent complains: " + complaints);
    }
    weighings_.checkNothingGrows();
}

void JumpRun::round(int number) {
    // One outcome that differs, which the load of the machine decides, is not to change all that follow.
    random_ = Random(seedOfRound(seed_, number));
    if (number == 1 || random_.onceIn(jumpsBetweenDisturbances)) {
        disturb();
    }
    jumpOnce();
}

LayoutPoint JumpRun::bringToNewPlace(Side side) {
    return session_->bring(jumper_.placeToLeave(random_, side));
}

Request JumpRun::randomRequest() {
    if (random_.onceIn(10)) {
        return Request::url;
    }
    return random_.onceIn(2) ? Request::primaryKey : Request::key;
}

void JumpRun::jumpOnce() {
    const Side side = random_.onceIn(4) ? Side::previous : Side::next;
    const Request request = randomRequest();
    const bool isMoved = random_.onceIn(2);
    // Where the displays have changed, nobody is told where the pointer is before it moves.
    const auto seen = isPointerLost_ ? std::nullopt : session_->person().pointer();
    isPointerLost_ = false;
    const LayoutPoint departure = isMoved || !seen || !jumper_.leadsAway(*seen, side) ? bringToNewPlace(side) : *seen;
    Outcome outcome = jumper_.jump(departure, side, request);
    count(outcome);
    while (outcome == Outcome::unheard) {
        outcome = jumper_.jump(departure, side, request);
        count(outcome);
    }
}

void JumpRun::count(Outcome outcome) {
    if (outcome == Outcome::unheard && std::chrono::steady_clock::now() - reconfigured_ > longestRestoring) {
        throw std::runtime_error("the agent does nothing about a request");
    }
    ++outcomes_[outcome];
}

void JumpRun::weigh() {
    desk::waitOnBus([] { return false; }, restBeforeWeighing);
    const ProcessWeight weight = weightOf(session_->agent().processId());
    weighings_.add(weight);
    std::printf("    %s: %ld KiB private dirty, %ld open descriptors\n", name_.c_str(), weight.privateDirtyKibibytes,
                weight.openDescriptors);
    std::fflush(stdout);
}

void JumpRun::print() const {
    const auto times = [this](Outcome outcome) {
        const auto found = outcomes_.find(outcome);
        return found == outcomes_.end() ? 0 : found->second;
    };
    const int landed = times(Outcome::landed);
    const int silent = times(Outcome::noCursor);
    const int refused = times(Outcome::refused);
    const auto row = [](const char* what, int number) { std::printf("    %-34s %6d\n", what, number); };
    std::printf("    %s\n", name_.c_str());
    row("jumps", landed + silent + refused);
    row("landed where they must", landed);
    row("\"No cursor\", nothing remembered", silent);
    row("refused by the desktop", refused);
    row("pressed again after a reload", times(Outcome::unheard));
    for (const auto& [what, number] : disturbances_) {
        row(what.c_str(), number);
    }
    if (!weighings_.all().empty()) {
        std::printf("    %-34s", "private dirty memory, KiB");
        for (const ProcessWeight& weight : weighings_.all()) {
            std::printf(" %6ld", weight.privateDirtyKibibytes);
        }
        std::printf("\n");
    }
    constexpr int percent = 100;
    constexpr int leastShare = 90;
    if (landed * percent < (landed + silent + refused) * leastShare) {
        std::printf("    SUSPICIOUS: fewer than %d %% have landed\n", leastShare);
    }
    std::fflush(stdout);
}

}  // namespace vantrel::soak
