#include "tests/desk/wayland/support/GnomePerson.hpp"

#include <cmath>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

namespace vantrel::desk {

namespace {

constexpr const char* service = "org.gnome.Mutter.RemoteDesktop";
constexpr const char* sessionInterface = "org.gnome.Mutter.RemoteDesktop.Session";

LayoutPoint pointOf(const std::string& json) {
    const auto numbers = nlohmann::json::parse(json);
    return {.x = numbers.at(0), .y = numbers.at(1)};
}

}  // namespace

GnomePerson::GnomePerson(GnomeProcess& shell) : shell_(shell), map_("us", {}) {
    GVariantPointer session;
    waitUntil([&] {
        session = shell_.client().call(service, "/org/gnome/Mutter/RemoteDesktop", service, "CreateSession", nullptr);
        return session != nullptr;
    });
    if (!session) {
        throw std::runtime_error("GNOME Shell gives nobody a keyboard");
    }
    const char* path = nullptr;
    g_variant_get(session.get(), "(&o)", &path);
    session_ = path;
    notify("Start", nullptr);
    // The devices come with their first use, which must not be a test's.
    type({keys::shift});
}

void GnomePerson::notify(const char* method, GVariant* arguments) {
    if (!shell_.client().call(service, session_, sessionInterface, method, arguments)) {
        throw std::runtime_error(std::string("GNOME Shell does not take ") + method);
    }
}

void GnomePerson::key(std::string_view name, bool isDown) {
    notify("NotifyKeyboardKeycode",
           g_variant_new("(ub)", KeyboardMap::kernelCode(map_.keycode(name)), static_cast<gboolean>(isDown)));
}

void GnomePerson::button(bool isDown) {
    constexpr gint32 leftButton = 0x110;
    notify("NotifyPointerButton", g_variant_new("(ib)", leftButton, static_cast<gboolean>(isDown)));
}

void GnomePerson::hold(const Chord& chord) {
    for (const std::string_view name : chord) {
        key(name, true);
        held_.emplace_back(name);
    }
}

void GnomePerson::letGo() {
    while (!held_.empty()) {
        key(held_.back(), false);
        held_.pop_back();
    }
}

void GnomePerson::type(const Chord& chord) {
    hold(chord);
    letGo();
}

LayoutPoint GnomePerson::origin() const {
    return pointOf(shell_.evaluate("[Main.layoutManager.primaryMonitor.x, Main.layoutManager.primaryMonitor.y]"));
}

void GnomePerson::moveTo(LayoutPoint point) {
    // Again where a late jump has come.
    constexpr auto attempt = std::chrono::seconds(2);
    const bool isThere = waitUntil([&] {
        const LayoutPoint corner = origin();
        static_cast<void>(shell_.evaluate("witness.moveTo(" + std::to_string(point.x + corner.x) + ", " +
                                          std::to_string(point.y + corner.y) + ")"));
        return waitFor(point, attempt);
    });
    if (!isThere) {
        std::ostringstream problem;
        problem << "the hand moves the pointer to " << point << ", and it is at " << pointer().value_or(LayoutPoint{});
        throw std::runtime_error(problem.str());
    }
}

void GnomePerson::click(const std::string& actor) {
    const std::string question = "witness.centreOf(" + actor + ")";
    // What has just come has no place before the next frame.
    if (!waitUntil([&] { return shell_.evaluate(question).find("null") == std::string::npos; })) {
        throw std::runtime_error(actor + " is nowhere on the screen");
    }
    const LayoutPoint centre = pointOf(shell_.evaluate(question));
    const LayoutPoint corner = origin();
    moveTo({.x = std::floor(centre.x - corner.x), .y = std::floor(centre.y - corner.y)});
    pressButton();
    releaseButton();
}

std::optional<LayoutPoint> GnomePerson::pointer() {
    // Not global.get_pointer(), which knows whole points alone.
    const LayoutPoint place =
        pointOf(shell_.evaluate("(place => [place.x, place.y])(global.backend.get_cursor_tracker().get_pointer()[0])"));
    const LayoutPoint corner = origin();
    return LayoutPoint{.x = place.x - corner.x, .y = place.y - corner.y};
}

bool GnomePerson::waitFor(LayoutPoint point, Duration deadline) {
    return waitUntil([&] { return pointer() == point; }, deadline);
}

bool GnomePerson::staysAt(LayoutPoint point, Duration time) {
    return !waitUntil([&] { return pointer() != point; }, time);
}

}  // namespace vantrel::desk
