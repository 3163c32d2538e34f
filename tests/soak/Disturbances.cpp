// What happens around the agent between two jumps.
#include <array>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tests/soak/JumpSoak.hpp"
#include "tests/soak/Pixels.hpp"
#include "tests/soak/RandomDisplays.hpp"

namespace vantrel::soak {

namespace {

using desk::MainPoint;

constexpr std::size_t mostPoints = 40;

struct Keymap {
    const char* layout;
    const char* option;
};
const std::vector<Keymap> keymaps{{"us", ""}, {"de", ""}, {"fr", ""}, {"ru", ""}, {"us,ru", "grp:alt_shift_toggle"}};

}  // namespace

struct JumpSoak::Disturbance {
    int weight;  ///< how often it happens among a hundred
    void (JumpSoak::*happen)();

    static const std::array<Disturbance, 9> all;
};

const std::array<JumpSoak::Disturbance, 9> JumpSoak::Disturbance::all{{{30, &JumpSoak::changeDisplays},
                                                                       {10, &JumpSoak::changeKeymap},
                                                                       {5, &JumpSoak::toggleLocks},
                                                                       {15, &JumpSoak::savePoint},
                                                                       {8, &JumpSoak::clearPoints},
                                                                       {10, &JumpSoak::jumpToPoint},
                                                                       {10, &JumpSoak::openURLs},
                                                                       {8, &JumpSoak::openOrCloseSettings},
                                                                       {4, &JumpSoak::restartPanel}}};

void JumpSoak::disturbInEveryWay() {
    // Twice, so that what was opened is closed again.
    for (int round = 0; round < 2; ++round) {
        for (const Disturbance& one : Disturbance::all) {
            (this->*one.happen)();
        }
    }
}

void JumpSoak::disturb() {
    int choice = random_.between(1, 100);
    for (const Disturbance& one : Disturbance::all) {
        choice -= one.weight;
        if (choice <= 0) {
            ++disturbances_;
            (this->*one.happen)();
            return;
        }
    }
}

void JumpSoak::changeDisplays() {
    shownDisplays_ = randomDisplays(random_);
    desk_.desk().layout().apply(shownDisplays_);
    foresight_.see(shownDisplays_);
}

void JumpSoak::changeKeymap() {
    const Keymap& keymap = random_.oneOf(keymaps);
    desk_.setKeymap(keymap.layout, keymap.option);
}

void JumpSoak::toggleLocks() {
    desk_.typist().type({random_.onceIn(2) ? desk::keys::capsLock : desk::keys::numLock});
}

void JumpSoak::restartPanel() {
    desk_.restartPanel();
}

void JumpSoak::awaitPoints(const char* after) {
    desk_.await(std::string("the points in the store after ") + after, [&] {
        const auto stored = nlohmann::json::parse(desk_.store().read("savedPoints"), nullptr, false);
        return stored.is_array() && stored.size() == points_.size() &&
               (points_.empty() || (stored.back().at("point").at("x") == points_.back().x &&
                                    stored.back().at("point").at("y") == points_.back().y));
    });
}

void JumpSoak::savePoint() {
    if (points_.size() >= mostPoints) {
        clearPoints();
    }
    points_.push_back(desk_.desk().pointer().position());
    nextPoint_ = points_.size() - 1;
    desk_.typist().type(desk::hyper(desk::keys::s));
    awaitPoints("a save");
}

void JumpSoak::clearPoints() {
    if (points_.empty()) {
        return;
    }
    points_.clear();
    nextPoint_ = 0;
    desk_.click(MenuRow::clearPoints);
    awaitPoints("clearing");
}

void JumpSoak::jumpToPoint() {
    // The server does not let the pointer go where no display is any more.
    if (points_.empty() || !isShown(points_[nextPoint_])) {
        savePoint();
    }
    const MainPoint target = points_[nextPoint_];
    nextPoint_ = (nextPoint_ + 1) % points_.size();
    MainPoint elsewhere = randomPlace();
    while (elsewhere == target) {
        elsewhere = randomPlace();
    }
    desk_.desk().pointer().moveTo(elsewhere);
    desk_.typist().type(desk::controlOptionCommand(desk::keys::m));
    awaitPointerAt(target);
}

void JumpSoak::openURLs() {
    if (points_.size() >= mostPoints) {
        clearPoints();
    }
    static const std::vector<std::string> idle{"vantrel:bogus", "https://example.org/", "vantrel://[", "vantrel:%zz"};
    std::vector<std::string> urls;
    MainPoint place = desk_.desk().pointer().position();
    const auto count = static_cast<std::size_t>(random_.between(10, 200));
    while (urls.size() < count) {
        if (random_.onceIn(5)) {
            urls.push_back(random_.oneOf(idle));
        } else if (random_.onceIn(3)) {
            urls.emplace_back("vantrel://teleport?direction=previous");
            place = pixelOf(foresight_.jump(pointOf(place), Side::previous).point);
        } else {
            urls.emplace_back("vantrel:next");
            place = pixelOf(foresight_.jump(pointOf(place), Side::next).point);
        }
    }
    // The last one's effect shows that all are served.
    urls.emplace_back("vantrel:save-point");
    points_.push_back(place);
    nextPoint_ = points_.size() - 1;
    urls_ += static_cast<int>(urls.size());
    desk_.openURLs(urls);
    awaitPoints("a burst of URLs");
}

void JumpSoak::openOrCloseSettings() {
    if (desk_.isSettingsOpen()) {
        desk_.closeSettings();
    } else {
        desk_.openSettings();
    }
}

}  // namespace vantrel::soak
