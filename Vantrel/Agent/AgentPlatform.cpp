#include "Vantrel/Agent/AgentPlatform.hpp"

#include <string>
#include <utility>
#include <vector>

namespace vantrel {

AgentPlatform::AgentPlatform(std::unique_ptr<x11::X11Platform> display)
    : display_(std::move(display)),
      defaults_(desktop::defaultStorePath()),
      application_(mainQueue_, [this](GDBusConnection* bus) { statusBar_.setSessionBus(bus); }) {
    // The last that the process does before it sleeps.
    defaults_.setRestHandler([] { desktop::RestingMemory::giveBack(); });
    display_->attach(
        nullptr, [this] { application_.fail("the X server went away"); },
        [this](std::vector<std::string> urls) {
            if (urls.empty()) {
                application_.reopen();
            } else {
                application_.open(std::move(urls));
            }
        });
}

AgentPlatform::~AgentPlatform() {
    // A press that came with the end of the X server left a task, which holds the controller; and the controller must
    // be gone before what it refers to.
    mainQueue_.dropTasks();
}

Platform AgentPlatform::abilities() {
    return {application_,
            display_->displays(),
            display_->pointerReader(),
            display_->pointerWarper(),
            display_->hotKeys(),
            mainQueue_,
            runLoop_,
            defaults_,
            statusBar_,
            sounds_,
            uuids_,
            urls_,
            preferencesWindowViews_};
}

}  // namespace vantrel
