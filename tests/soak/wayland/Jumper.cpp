#include "tests/soak/wayland/Jumper.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "tests/soak/RandomDisplays.hpp"

namespace vantrel::soak {

namespace {

using desk::LayoutPoint;

constexpr auto noCursor = "No cursor";
/// Nearly all are there by then; for the others the agent is asked what has become of them.
constexpr std::chrono::milliseconds quickly(100);
/// How long a desktop may take to move the pointer, or to tell of it, before that counts as a refusal.
constexpr std::chrono::seconds patience(5);
/// How long a busy machine may take until the agent has heard of a key; else the key had no effect.
constexpr std::chrono::seconds longestWay(1);

std::string textOf(LayoutPoint point) {
    std::ostringstream text;
    text << point;
    return text.str();
}

}  // namespace

StoreReader& Jumper::store() {
    if (!store_) {
        store_ = std::make_unique<StoreReader>(session_.desk().home().storeFile());
    }
    return *store_;
}

LayoutPoint Jumper::randomPlace(Random& random) {
    const auto& bounds = random.oneOf(foresight_.displays()).bounds;
    LayoutPoint place{.x = static_cast<double>(random.between(bounds.x, bounds.x + bounds.width - 1)),
                      .y = static_cast<double>(random.between(bounds.y, bounds.y + bounds.height - 1))};
    if (random.onceIn(3)) {
        place.x = bounds.x + (random.onceIn(2) ? 0 : bounds.width - 1);
    }
    return place;
}

bool Jumper::leadsAway(LayoutPoint place, Side side) const {
    return session_.kept(foresight_.landingOf(place, side).point) != place;
}

LayoutPoint Jumper::placeToLeave(Random& random, Side side) {
    LayoutPoint place = randomPlace(random);
    while (!leadsAway(place, side)) {
        place = randomPlace(random);
    }
    return place;
}

void Jumper::ask(Side side, Request request) {
    const bool isNext = side == Side::next;
    if (request == Request::url) {
        session_.openURLs({isNext ? "vantrel://next" : "vantrel://previous"});
    } else if (request == Request::primaryKey && isNext) {
        session_.person().type(desk::hyper(desk::keys::d));
    } else {
        session_.person().type(desk::controlOptionCommand(isNext ? desk::keys::rightArrow : desk::keys::leftArrow));
    }
}

bool Jumper::isRemembered(LayoutPoint departure) {
    const std::string text = store().read("rememberedPositions");
    const auto stored = nlohmann::json::parse(text.empty() ? "{}" : text);
    return std::any_of(stored.begin(), stored.end(), [&](const nlohmann::json& point) {
        return point.at("x") == departure.x && point.at("y") == departure.y;
    });
}

void Jumper::clearLabel() {
    if (!saysNoCursor_) {
        return;
    }
    session_.openURLs({"vantrel:bogus"});
    if (!desk::waitUntil([this] { return session_.label() != noCursor; })) {
        throw std::runtime_error("the item keeps saying \"No cursor\"");
    }
    saysNoCursor_ = false;
}

std::string Jumper::whereabouts() {
    const auto seen = session_.person().pointer();
    std::string text = seen ? "the pointer is at " + textOf(*seen) : "the pointer is not seen";
    text += "; the item says \"" + session_.label() + "\"; stored: " + store().read("rememberedPositions");
    for (const desk::PlacedDisplay& display : foresight_.displays()) {
        text += "\n    output " + std::to_string(display.output) + ": " + std::to_string(display.bounds.width) + "x" +
                std::to_string(display.bounds.height) + " at " + std::to_string(display.bounds.x) + ", " +
                std::to_string(display.bounds.y);
    }
    return text;
}

Outcome Jumper::land(LayoutPoint departure, Side side) {
    foresight_.jump(departure, side);
    if (!isRemembered(departure)) {
        throw std::runtime_error("the pointer has moved, but the store does not know that it left " +
                                 textOf(departure) + ": " + store().read("rememberedPositions"));
    }
    return Outcome::landed;
}

Outcome Jumper::jump(LayoutPoint departure, Side side, Request request) {
    clearLabel();
    const LayoutPoint target = session_.kept(foresight_.landingOf(departure, side).point);
    const bool wasRemembered = isRemembered(departure);
    ask(side, request);
    if (session_.person().waitFor(target, quickly)) {
        return land(departure, side);
    }
    awaitEffect(departure, wasRemembered);
    return judge(departure, side, wasRemembered);
}

void Jumper::awaitEffect(LayoutPoint departure, bool wasRemembered) {
    desk::waitUntil(
        [&] {
            session_.awaitAgent();
            const auto seen = session_.person().pointer();
            return session_.label() == noCursor || (seen && *seen != departure) ||
                   (!wasRemembered && isRemembered(departure));
        },
        longestWay);
}

Outcome Jumper::jumpUnseen(LayoutPoint departure, Side side, Request request, const std::function<void()>& end) {
    clearLabel();
    const bool wasRemembered = isRemembered(departure);
    ask(side, request);
    awaitEffect(departure, wasRemembered);
    end();
    return judge(departure, side, wasRemembered);
}

Outcome Jumper::judge(LayoutPoint departure, Side side, bool wasRemembered) {
    const LayoutPoint target = session_.kept(foresight_.landingOf(departure, side).point);
    desk::SeatClient& person = session_.person();
    saysNoCursor_ = session_.label() == noCursor;
    const bool isNewlyRemembered = !wasRemembered && isRemembered(departure);
    if (saysNoCursor_) {
        if (isNewlyRemembered) {
            throw std::runtime_error("the agent says \"No cursor\", but remembers " + textOf(departure) + "; " +
                                     whereabouts());
        }
        if (!person.waitFor(departure, patience)) {
            throw std::runtime_error("the agent says \"No cursor\", but the pointer has left " + textOf(departure) +
                                     "; " + whereabouts());
        }
        return Outcome::noCursor;
    }
    if (person.waitFor(target, isNewlyRemembered || wasRemembered ? patience : desk::Duration::zero())) {
        return land(departure, side);
    }
    if (person.pointer() == departure && isNewlyRemembered) {
        foresight_.jump(departure, side);
        return Outcome::refused;
    }
    if (person.pointer() == departure && !isRemembered(departure)) {
        return Outcome::unheard;
    }
    throw std::runtime_error("a jump from " + textOf(departure) + " must lead to " + textOf(target) + ", but " +
                             whereabouts());
}

}  // namespace vantrel::soak
