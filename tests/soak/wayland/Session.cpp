#include "tests/soak/wayland/Session.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <tuple>

#include "tests/soak/ProcessWeight.hpp"
#include "tests/soak/RandomDisplays.hpp"

#ifdef VANTREL_KWIN
#include "tests/soak/wayland/KwinSession.hpp"
#endif
#ifdef VANTREL_SWAY
#include "tests/soak/wayland/SwaySession.hpp"
#endif

namespace vantrel::soak {

namespace {

using desk::LayoutArea;
using desk::LayoutPoint;

/// Rows of the agent's menu.
constexpr std::size_t menuRows = 16;

std::vector<LayoutArea> sorted(std::vector<LayoutArea> areas) {
    std::sort(areas.begin(), areas.end(), [](const LayoutArea& one, const LayoutArea& other) {
        return std::tie(one.x, one.y, one.width, one.height) < std::tie(other.x, other.y, other.width, other.height);
    });
    return areas;
}

std::string textOf(const std::vector<LayoutArea>& areas) {
    std::string text;
    for (const LayoutArea& area : areas) {
        text += " " + std::to_string(area.width) + "x" + std::to_string(area.height) + "+" + std::to_string(area.x) +
                "+" + std::to_string(area.y);
    }
    return text;
}

std::string placeText(LayoutPoint point) {
    return std::to_string(point.x) + ", " + std::to_string(point.y);
}

/// The protocols tell of 256ths of a point, and some compositors cut down to them.
bool isNear(LayoutPoint one, LayoutPoint other) {
    constexpr double fraction = 1.0 / 128;
    return std::abs(one.x - other.x) <= fraction && std::abs(one.y - other.y) <= fraction;
}

GVariant* openArguments(const std::vector<std::string>& urls) {
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE_STRING_ARRAY);
    for (const std::string& url : urls) {
        g_variant_builder_add(&list, "s", url.c_str());
    }
    return g_variant_new("(as@a{sv})", &list, g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0));
}

}  // namespace

void Session::expect(std::vector<ShownDisplay> displays, std::vector<int> outputs) {
    shown_ = std::move(displays);
    outputs_ = std::move(outputs);
    awaitShown();
}

void Session::show(const std::vector<ShownDisplay>& displays) {
    shown_ = displays;
    apply(displays);
    awaitShown();
}

void Session::awaitShown() {
    const auto wanted = sorted(areas(shown_));
    const bool isShown = desk::waitUntil([&] {
        return person().displayCount() == wanted.size() && sorted(person().displays()) == wanted &&
               person().origin() == mainCorner(shown_);
    });
    if (!isShown) {
        throw std::runtime_error("the displays are not shown as was asked for:" + textOf(wanted) + " but" +
                                 textOf(sorted(person().displays())));
    }
}

void Session::awaitKeysTold() {
    // One round for the keys, and another for what a compositor writes in the next turn of its loop.
    person().synchronise();
    person().synchronise();
}

void Session::awaitAgent() {
    awaitKeysTold();
    // Keys go before what the bus brings, and what the agent does about one is done in one go.
    label();
    if (!agent_->isRunning()) {
        throw std::runtime_error("the agent has ended: " + agent_->standardError());
    }
    person().synchronise();
    person().synchronise();
}

std::optional<LayoutPoint> Session::seenNear(LayoutPoint place) {
    constexpr std::chrono::milliseconds aWhile(300);
    const auto end = std::chrono::steady_clock::now() + aWhile;
    do {
        const auto seen = person().pointer();
        if (seen && isNear(*seen, place)) {
            return seen;
        }
        person().look(std::chrono::milliseconds(5));
    } while (std::chrono::steady_clock::now() < end);
    return std::nullopt;
}

LayoutPoint Session::bring(LayoutPoint place) {
    constexpr int attempts = 20;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        person().moveUnseenTo(place);
        if (const auto seen = seenNear(place)) {
            return *seen;
        }
        // KWin 6 lets a hand over one edge at a time; and a motion to where the pointer rests tells nobody anything.
        walkTowards(place, attempt % 2 == 0);
    }
    throw std::runtime_error("the pointer does not get to " + placeText(place) + " by hand");
}

void Session::walkTowards(LayoutPoint place, bool isForward) {
    std::vector<desk::PlacedDisplay> way = placed(shown_);
    const auto isRow = [&] {
        return std::all_of(way.begin(), way.end(), [&](const desk::PlacedDisplay& one) {
            return std::all_of(way.begin(), way.end(), [&](const desk::PlacedDisplay& other) {
                return one.output == other.output || one.bounds.x + one.bounds.width <= other.bounds.x ||
                       other.bounds.x + other.bounds.width <= one.bounds.x;
            });
        });
    };
    std::sort(way.begin(), way.end(), [inARow = isRow()](const auto& one, const auto& other) {
        return inARow ? one.bounds.x < other.bounds.x : one.bounds.y < other.bounds.y;
    });
    if (!isForward) {
        std::reverse(way.begin(), way.end());
    }
    for (const desk::PlacedDisplay& display : way) {
        const desk::MainRect& bounds = display.bounds;
        person().moveUnseenTo({.x = bounds.x + bounds.width / 2.0, .y = bounds.y + bounds.height / 2.0});
        if (holds(bounds, place)) {
            return;
        }
    }
}

void Session::startAgent() {
    item_.reset();
    panel_.reset();
    desk().environment().set("DBUS_SESSION_BUS_ADDRESS", panelBus());
    keepNothingFreed(desk().environment());
    panel_ = std::make_unique<desk::TestPanel>(panelBus());
    agent_ = desk().startAgent();
    awaitItem();
}

void Session::awaitItem() {
    const bool isThere = desk::waitOnBus([this] {
        if (panel_->items().empty()) {
            return false;
        }
        item_ = std::make_unique<desk::PanelItem>(panel_->bus(), panel_->items().back());
        return item_->rows().size() == menuRows;
    });
    if (!isThere) {
        throw std::runtime_error("the agent's item does not come to the panel: " + agent_->standardError());
    }
}

void Session::killAgent() {
    item_.reset();
    agent_->kill();
}

void Session::endAgent() {
    item_.reset();
    agent_->sendSignal(SIGTERM);
    if (agent_->waitForExit() != desk::ordinaryEnd) {
        throw std::runtime_error("the agent's end is not the ordinary one");
    }
}

void Session::openURLsLater(const std::vector<std::string>& urls) {
    g_dbus_connection_call(panel_->bus().get(), "org.vantrel.Vantrel", "/org/vantrel/Vantrel",
                           "org.freedesktop.Application", "Open", openArguments(urls), nullptr, G_DBUS_CALL_FLAGS_NONE,
                           -1, nullptr, nullptr, nullptr);
    g_dbus_connection_flush_sync(panel_->bus().get(), nullptr, nullptr);
}

void Session::openURLs(const std::vector<std::string>& urls) {
    const auto answer = panel_->bus().call("org.vantrel.Vantrel", "/org/vantrel/Vantrel", "org.freedesktop.Application",
                                           "Open", openArguments(urls));
    if (!answer) {
        throw std::runtime_error("the agent takes no URLs");
    }
}

std::vector<std::string> sessionNames() {
    std::vector<std::string> names;
#ifdef VANTREL_SWAY
    names.emplace_back("sway");
#endif
#ifdef VANTREL_KWIN
    names.emplace_back("kwin");
#endif
    return names;
}

std::unique_ptr<Session> makeSession(const std::string& name) {
#ifdef VANTREL_SWAY
    if (name == "sway") {
        return std::make_unique<SwaySession>();
    }
#endif
#ifdef VANTREL_KWIN
    if (name == "kwin") {
        return std::make_unique<KwinSession>();
    }
#endif
    throw std::runtime_error("no session of " + name + " can be had here");
}

}  // namespace vantrel::soak
