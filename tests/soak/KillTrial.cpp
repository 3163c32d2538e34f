#include "tests/soak/KillTrial.hpp"

#include <chrono>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <thread>

#include "tests/soak/WritingActions.hpp"

namespace vantrel::soak {

namespace {

/// In so many kills every action is met on both sides of its writing.
constexpr int enoughForBothSides = 500;
constexpr double longestLaunch = 60;  // ms

struct Tally {
    int before = 0;
    int after = 0;
};

class KillTrial {
  public:
    explicit KillTrial(std::uint64_t seed) : random_(seed), actions_(writingActions(desk_, random_)) {
        // No hardware of this machine is to make a sound.
        desk_.desk().environment().set("ALSA_CONFIG_PATH", "/dev/null");
        // What an agent that has run before has stored, so that each action changes something.
        desk_.desk().defaults().writeText("mode", "automatic");
    }

    void run(int kills) {
        for (int kill = 1; kill <= kills; ++kill) {
            try {
                if (random_.onceIn(static_cast<int>(actions_.size()) + 1)) {
                    killWhileStarting();
                } else {
                    killAfter(random_.oneOf(actions_));
                }
            } catch (const std::exception& error) {
                throw std::runtime_error("kill " + std::to_string(kill) + ": " + error.what());
            }
        }
        print(kills);
        checkBothSides(kills);
    }

  private:
    void wait(double longest) {
        constexpr double shortest = 0.02;
        std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(random_.onAllScales(shortest, longest)));
    }

    /// What the next launch finds. Nobody else has the store open while the agent is killed and started.
    StoreContents contentsAtLaunch() {
        desk_.startAgent();
        desk_.store().checkIntegrity();
        return desk_.store().contents();
    }

    void kill() {
        desk_.closeStore();
        desk_.killAgent();
    }

    void killAfter(const WritingAction& action) {
        const StoreContents before = contentsAtLaunch();
        if (action.prepare) {
            action.prepare();
        }
        desk_.closeStore();
        action.trigger();
        wait(action.longest);
        kill();
        const StoreContents now = contentsAtLaunch();
        if (now == before) {
            ++tallies_[action.name].before;
        } else if (action.isAfter(before, now)) {
            ++tallies_[action.name].after;
        } else {
            throw std::runtime_error("after " + action.name + " the store held" + textOf(before) + "\nand now holds" +
                                     textOf(now));
        }
        keepPointsFew(now);
        kill();
    }

    void killWhileStarting() {
        const StoreContents before = contentsAtLaunch();
        kill();
        const auto starting = desk_.desk().startProgram();
        wait(longestLaunch);
        starting->kill();
        if (contentsAtLaunch() != before) {
            throw std::runtime_error("a start has changed the store");
        }
        ++tallies_["start"].before;
        kill();
    }

    /// Long lists only make the trial slow.
    void keepPointsFew(const StoreContents& now) {
        constexpr std::size_t many = 60000;
        const auto points = now.find("savedPoints");
        if (points != now.end() && points->second.size() > many) {
            desk_.click(MenuRow::clearPoints);
            desk_.await("the points are cleared", [&] { return desk_.store().read("savedPoints") == "[]"; });
        }
    }

    static std::string textOf(const StoreContents& contents) {
        std::string text;
        for (const auto& [key, value] : contents) {
            text += "\n    " + key + " = " + value;
        }
        return text;
    }

    void print(int kills) const {
        std::printf("    %d kills; found at the next launch:\n", kills);
        for (const auto& [name, tally] : tallies_) {
            std::printf("    %-14s %4d times the state before, %4d times the state after\n", name.c_str(), tally.before,
                        tally.after);
        }
    }

    void checkBothSides(int kills) const {
        if (kills < enoughForBothSides) {
            return;
        }
        for (const WritingAction& action : actions_) {
            const auto tally = tallies_.find(action.name);
            if (tally == tallies_.end() || tally->second.before == 0 || tally->second.after == 0) {
                throw std::runtime_error("the kills were all on one side of " + action.name + ", which proves nothing");
            }
        }
    }

    Random random_;
    SoakDesk desk_;
    std::vector<WritingAction> actions_;
    std::map<std::string, Tally> tallies_;
};

}  // namespace

void runKillTrial(std::uint64_t seed, int kills) {
    KillTrial(seed).run(kills);
}

}  // namespace vantrel::soak
