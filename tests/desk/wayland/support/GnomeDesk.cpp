#include "tests/desk/wayland/support/GnomeDesk.hpp"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tests/desk/wayland/support/WaylandDesk.hpp"

namespace vantrel::desk {

GnomeOptions GnomeDesk::twoDisplays() {
    return {.outputs = WaylandDesk::twoOutputs()};
}

GnomeDesk::GnomeDesk(const GnomeOptions& options)
    : CompositorDesk(std::make_unique<GnomeProcess>(options)), person_(std::make_unique<GnomePerson>(shell())) {}

std::string GnomeDesk::item(const std::string& expression) {
    return shell().evaluate("(item => item ? " + expression + " : null)(Main.panel.statusArea.vantrel)");
}

std::vector<std::string> GnomeDesk::rows() {
    const auto texts = nlohmann::json::parse(item("item.menu._getMenuItems().map(row => row.label?.text ?? '')"));
    return texts.is_null() ? std::vector<std::string>() : texts.get<std::vector<std::string>>();
}

bool GnomeDesk::waitForTitle(const std::string& title, Duration deadline) {
    return waitUntil([&] { return item("item.get_first_child().text") == nlohmann::json(title).dump(); }, deadline);
}

void GnomeDesk::watchTitles() {
    item("witness.watchText(item.get_first_child())");
}

bool GnomeDesk::waitForWatchedTitle(const std::string& title, Duration deadline) {
    const std::string question = "witness.texts.includes(" + nlohmann::json(title).dump() + ")";
    return waitUntil([&] { return shell().evaluate(question) == "true"; }, deadline);
}

std::string GnomeDesk::notice() {
    return shell().evaluate(
        "Main.uiGroup.get_children().map(actor => actor.get_first_child()).find("
        "actor => actor?.has_style_class_name?.('vantrel-notice'))?.text ?? null");
}

void GnomeDesk::chooseRow(std::size_t row) {
    if (item("item.menu.isOpen") != "true") {
        person_->click("Main.panel.statusArea.vantrel");
    }
    if (!waitUntil([this] { return item("item.menu.isOpen") == "true"; })) {
        throw std::runtime_error("the item's menu does not open");
    }
    person_->click("Main.panel.statusArea.vantrel.menu._getMenuItems()[" + std::to_string(row) + "]");
}

bool GnomeDesk::jump(const Chord& chord, LayoutPoint target) {
    return jump([&] { person_->type(chord); }, target);
}

bool GnomeDesk::jump(const std::string& url, LayoutPoint target) {
    return jump([&] { open(url); }, target);
}

bool GnomeDesk::jump(const std::function<void()>& ask, LayoutPoint target) {
    return CompositorDesk::jump(
        ask, {.pointer = [this] { return person_->pointer(); },
              .waitForTarget = [&](Duration deadline) { return person_->waitFor(target, deadline); }});
}

}  // namespace vantrel::desk
