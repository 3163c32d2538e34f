#include "tests/soak/wayland/KillRun.hpp"

#include <array>
#include <chrono>
#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <thread>

#include "tests/soak/wayland/Jumper.hpp"
#include "tests/soak/wayland/Leftovers.hpp"

namespace vantrel::soak {

namespace {

using desk::LayoutPoint;

/// In milliseconds: longer than what is interrupted takes.
constexpr double longestMoment = 40;
constexpr double longestStart = 150;
/// A jump that a busy compositor has no time for is none.
constexpr int mostAttempts = 10;

class KillRun {
  public:
    KillRun(const std::string& name, std::uint64_t seed)
        : name_(name), random_(seed), session_(makeSession(name)), jumper_(*session_) {
        // What an ordinary life leaves is the measure.
        session_->startAgent();
        jumpWithKeys();
        end();
        usualFiles_ = filesOfAgents(session_->desk().compositor().runtimeDirectory());
    }

    void run(int kills) {
        session_->startAgent();
        for (int kill = 1; kill <= kills; ++kill) {
            const Moment& moment = moments[static_cast<std::size_t>(random_.between(0, moments.size() - 1))];
            try {
                killDuring(moment);
            } catch (const std::exception& error) {
                throw std::runtime_error(name_ + ", kill " + std::to_string(kill) + ", " + moment.name + ": " +
                                         error.what());
            }
        }
        session_->endAgent();
        print(kills);
    }

  private:
    struct Moment {
        const char* name;
        void (KillRun::*begin)();
        void (KillRun::*clear)();  ///< what the person does afterwards
    };
    static const std::array<Moment, 7> moments;

    void clearNothing() {}

    void beginStart() {
        session_->endAgent();
        starting_ = session_->desk().startProgram();
        wait(longestStart);
    }
    void beginJump() {
        departure_ = session_->bring(jumper_.placeToLeave(random_, Side::next));
        session_->person().type(random_.onceIn(2) ? desk::hyper(desk::keys::d)
                                                  : desk::controlOptionCommand(desk::keys::rightArrow));
    }
    void beginSave() { session_->person().type(desk::hyper(desk::keys::s)); }
    void beginReload() { session_->reconfigure(); }
    void beginLayout() {
        session_->show(randomLayout(random_, session_->outputs(), session_->shapes()));
        jumper_.sees();
        session_->openURLsLater({"vantrel:save-point"});
    }
    void beginHeldJump() {
        departure_ = session_->bring(jumper_.placeToLeave(random_, Side::next));
        session_->person().pressButton();
        session_->openURLsLater({"vantrel://next"});
    }
    void releaseButton() { session_->person().releaseButton(); }
    void beginEnd() { session_->agent().sendSignal(SIGTERM); }

    void wait(double longest) {
        constexpr double shortest = 0.02;
        std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(random_.onAllScales(shortest, longest)));
    }

    void killDuring(const Moment& moment) {
        const StoreContents before = jumper_.store().contents();
        jumper_.closeStore();
        departure_.reset();
        (this->*moment.begin)();
        if (starting_) {
            starting_->kill();
            starting_.reset();
        } else {
            wait(longestMoment);
            session_->killAgent();
        }
        (this->*moment.clear)();
        ++kills_[moment.name];
        checkDesktop();
        session_->startAgent();
        checkStore(before);
        jumpWithKeys();
        end();
        checkFiles();
        session_->startAgent();
    }

    /// What a person would notice without any agent.
    void checkDesktop() {
        const auto directory = session_->desk().compositor().runtimeDirectory();
        if (!desk::waitUntil([&] { return helpersOfAgents(directory).empty(); })) {
            throw std::runtime_error("a helper of the killed agent stays: " + helpersOfAgents(directory).front());
        }
        session_->bring(jumper_.placeToLeave(random_, Side::next));
        desk::SeatClient& person = session_->person();
        const int clicks = person.clicks();
        person.pressButton();
        person.releaseButton();
        if (!desk::waitUntil([&] {
                person.synchronise();
                return person.clicks() == clicks + 1;
            })) {
            throw std::runtime_error("a click does not come to what is beneath the pointer");
        }
    }

    void checkStore(const StoreContents& before) {
        jumper_.store().checkIntegrity();
        StoreContents now = jumper_.store().contents();
        if (departure_ && jumper_.isRemembered(*departure_)) {
            jumper_.foresight().jump(*departure_, Side::next);
        }
        StoreContents former = before;
        for (const char* const key : {"rememberedPositions", "savedPoints"}) {
            checkGrown(key, former[key], now[key]);
            former.erase(key);
            now.erase(key);
        }
        if (former != now) {
            throw std::runtime_error("the store holds something else under keys that nothing has written");
        }
    }

    /// Each with the value's type before it. Layouts are jumped in meanwhile, so there may be other positions, but each
    /// must be one, and no point may be missing.
    static void checkGrown(const std::string& key, const std::string& before, const std::string& now) {
        const std::string type = "blob:";
        if (now.empty() && before.empty()) {
            return;
        }
        if (!now.starts_with(type)) {
            throw std::runtime_error("the store has lost " + key);
        }
        const auto former = nlohmann::json::parse(before.empty() ? "[]" : before.substr(type.size()));
        const auto stored = nlohmann::json::parse(now.substr(type.size()));
        if (stored.size() < former.size()) {
            throw std::runtime_error("the store has lost some of " + key + ": " + now);
        }
        for (const auto& each : stored) {
            const auto& point = each.contains("point") ? each.at("point") : each;
            if (!point.at("x").is_number() || !point.at("y").is_number()) {
                throw std::runtime_error("the store has no point in " + key + ": " + now);
            }
        }
    }

    void jumpWithKeys() {
        for (const Request request : {Request::primaryKey, Request::key}) {
            Outcome outcome = Outcome::noCursor;
            for (int attempt = 0; outcome == Outcome::noCursor && attempt < mostAttempts; ++attempt) {
                const LayoutPoint place = session_->bring(jumper_.placeToLeave(random_, Side::next));
                outcome = jumper_.jump(place, Side::next, request);
            }
            if (outcome != Outcome::landed) {
                throw std::runtime_error("a hot key of the next agent has no effect");
            }
        }
    }

    void end() {
        session_->endAgent();
        session_->checkNoHotKeysRemain();
    }

    void checkFiles() {
        const auto files = filesOfAgents(session_->desk().compositor().runtimeDirectory());
        for (const std::string& file : files) {
            if (!usualFiles_.contains(file)) {
                throw std::runtime_error("the agents have left " + file + " behind");
            }
        }
    }

    void print(int kills) const {
        std::printf("    %s: %d kills, after each of which desktop, hot keys and store were whole\n", name_.c_str(),
                    kills);
        for (const auto& [name, number] : kills_) {
            std::printf("    %-34s %6d\n", name.c_str(), number);
        }
        std::fflush(stdout);
    }

    std::string name_;
    Random random_;
    std::unique_ptr<Session> session_;
    Jumper jumper_;
    std::set<std::string> usualFiles_;
    std::unique_ptr<desk::AgentProcess> starting_;
    std::optional<LayoutPoint> departure_;
    std::map<std::string, int> kills_;
};

const std::array<KillRun::Moment, 7> KillRun::moments{
    {{"while it starts", &KillRun::beginStart, &KillRun::clearNothing},
     {"while it jumps", &KillRun::beginJump, &KillRun::clearNothing},
     {"while it saves a point", &KillRun::beginSave, &KillRun::clearNothing},
     {"after the configuration was read", &KillRun::beginReload, &KillRun::clearNothing},
     {"while the displays change", &KillRun::beginLayout, &KillRun::clearNothing},
     {"in a jump with a button held", &KillRun::beginHeldJump, &KillRun::releaseButton},
     {"while it ends", &KillRun::beginEnd, &KillRun::clearNothing}}};

}  // namespace

void runKills(const std::string& session, std::uint64_t seed, int kills) {
    KillRun(session, seed).run(kills);
}

}  // namespace vantrel::soak
