#include "tests/desk/wayland/support/CompositorDesk.hpp"

#include <stdexcept>
#include <utility>

#include "Vantrel/Handles/LocalSocket.hpp"

namespace vantrel::desk {

namespace {

/// Of a foreign scheme: the agent takes it, when it has launched, and does nothing about it.
constexpr auto nothingToDo = "about:blank";

}  // namespace

CompositorDesk::CompositorDesk(std::unique_ptr<CompositorProcess> compositor)
    : compositor_(std::move(compositor)), environment_(Environment::minimal()) {
    home_.enter(environment_);
    environment_.set("XDG_RUNTIME_DIR", compositor_->runtimeDirectory().native());
    environment_.set("WAYLAND_DISPLAY", compositor_->displayName());
    environment_.set("DBUS_SESSION_BUS_ADDRESS", compositor_->busAddress());
    defaults().writeText("animation", "none");
    defaults().writeInteger("soundEnabled", 0);
}

std::unique_ptr<AgentProcess> CompositorDesk::startProgram(const std::vector<std::string>& arguments) {
    const auto errors = home_.path() / ("stderr" + std::to_string(++programs_));
    return std::make_unique<AgentProcess>(environment_, errors, arguments, agentWrapper_);
}

std::unique_ptr<AgentProcess> CompositorDesk::startAgent() {
    auto agent = startProgram();
    waitUntil([&] { return !agent->isRunning() || isServed(); });
    if (!agent->isRunning() || !open(nothingToDo) || !agent->isRunning()) {
        throw std::runtime_error("the agent does not become ready: " + agent->standardError());
    }
    return agent;
}

std::filesystem::path CompositorDesk::agentSocket() const {
    return compositor_->runtimeDirectory() / ("vantrel-" + compositor_->displayName() + ".sock");
}

bool CompositorDesk::isServed() const {
    return connectToSocket(agentSocket()).isOpen();
}

bool CompositorDesk::jump(const std::function<void()>& ask, const Eyes& eyes) {
    const auto departure = eyes.pointer();
    for (int attempt = 0; attempt < 5; ++attempt) {
        ask();
        if (eyes.waitForTarget(std::chrono::seconds(5))) {
            return true;
        }
        if (eyes.pointer() != departure) {
            return false;
        }
    }
    return false;
}

bool CompositorDesk::savePoint() {
    const auto before = defaults().read("savedPoints");
    return waitUntil([&] {
        open("vantrel://save-point");
        return waitUntil([&] { return defaults().read("savedPoints") != before; }, std::chrono::seconds(5));
    });
}

bool CompositorDesk::open(const std::string& url) {
    return startProgram({url})->waitForExit() == ordinaryEnd;
}

bool CompositorDesk::openAndWait(const std::string& url) {
    return open(url) && open(nothingToDo);
}

}  // namespace vantrel::desk
