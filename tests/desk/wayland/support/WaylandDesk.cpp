#include "tests/desk/wayland/support/WaylandDesk.hpp"

#include <stdexcept>
#include <utility>

#include "Vantrel/Handles/LocalSocket.hpp"

namespace vantrel::desk {

std::vector<PrivateOutput> WaylandDesk::twoOutputs() {
    return {{.mode = "640x480"}, {.mode = "400x300", .x = -400, .y = 100}};
}

WaylandDesk::WaylandDesk(std::unique_ptr<CompositorProcess> compositor, const std::string& keyboardLayouts,
                         const std::string& keyboardOptions)
    : compositor_(std::move(compositor)),
      keyboardLayouts_(keyboardLayouts),
      keyboardOptions_(keyboardOptions),
      environment_(Environment::minimal()) {
    seatPerson();
    home_.enter(environment_);
    environment_.set("XDG_RUNTIME_DIR", compositor_->runtimeDirectory().native());
    environment_.set("WAYLAND_DISPLAY", compositor_->displayName());
    environment_.set("DBUS_SESSION_BUS_ADDRESS", compositor_->busAddress());
    defaults().writeText("animation", "none");
    defaults().writeInteger("soundEnabled", 0);
}

void WaylandDesk::seatPerson() {
    person_ = std::make_unique<SeatClient>(compositor_->socket(), keyboardLayouts_, keyboardOptions_);
}

std::unique_ptr<AgentProcess> WaylandDesk::startProgram(const std::vector<std::string>& arguments) {
    const auto errors = home_.path() / ("stderr" + std::to_string(++programs_));
    return std::make_unique<AgentProcess>(environment_, errors, arguments, agentWrapper_);
}

std::unique_ptr<AgentProcess> WaylandDesk::startAgent() {
    auto agent = startProgram();
    waitUntil([&] { return !agent->isRunning() || isServed(); });
    // Of a foreign scheme: the agent takes it, when it has launched, and does nothing about it.
    if (!agent->isRunning() || !open("about:blank") || !agent->isRunning()) {
        throw std::runtime_error("the agent does not become ready: " + agent->standardError());
    }
    return agent;
}

std::filesystem::path WaylandDesk::agentSocket() const {
    return compositor_->runtimeDirectory() / ("vantrel-" + compositor_->displayName() + ".sock");
}

bool WaylandDesk::isServed() const {
    return connectToSocket(agentSocket()).isOpen();
}

bool WaylandDesk::jump(const Chord& chord, LayoutPoint target) {
    return jump([&] { person_->type(chord); }, target);
}

bool WaylandDesk::jump(const std::string& url, LayoutPoint target) {
    return jump([&] { open(url); }, target);
}

bool WaylandDesk::jump(const std::function<void()>& ask, LayoutPoint target) {
    const auto departure = person_->pointer();
    for (int attempt = 0; attempt < 5; ++attempt) {
        ask();
        if (person_->waitFor(target, std::chrono::seconds(5))) {
            return true;
        }
        if (person_->pointer() != departure) {
            return false;
        }
    }
    return false;
}

bool WaylandDesk::savePoint() {
    const auto before = defaults().read("savedPoints");
    return waitUntil([&] {
        open("vantrel://save-point");
        return waitUntil([&] { return defaults().read("savedPoints") != before; }, std::chrono::seconds(5));
    });
}

bool WaylandDesk::open(const std::string& url) {
    return startProgram({url})->waitForExit() == ordinaryEnd;
}

}  // namespace vantrel::desk
