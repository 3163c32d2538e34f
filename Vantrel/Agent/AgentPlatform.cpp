#include "Vantrel/Agent/AgentPlatform.hpp"

#include <malloc.h>

#include <string>
#include <utility>
#include <vector>

#include "Vantrel/Desktop/Helpers/HelperProgram.hpp"
#include "Vantrel/Desktop/Store/StoreFiles.hpp"

namespace vantrel {

AgentPlatform::AgentPlatform(std::unique_ptr<DisplaySession> session)
    : session_(std::move(session)),
      defaults_(desktop::defaultStorePath()),
      statusBar_([this](ItemPresenter::Events events) { return session_->makeItemPresenter(std::move(events)); },
                 starterOf("vantrel-overlay")),
      sounds_(starterOf("vantrel-sound")),
      preferencesWindowViews_(session_->windowingSystem(), *session_),
      application_(mainQueue_, [this](GDBusConnection* bus) { statusBar_.setSessionBus(bus); }),
      programFile_([this] { beginAnew(); }) {
    // The last that the process does before it sleeps: what a burst of changes has freed goes back to the system.
    defaults_.setRestHandler([] { malloc_trim(0); });
    session_->attach({.ended = [this](const std::string& reason) { application_.fail(reason); },
                      .interrupted = [this] { beginAnew(); },
                      .opened =
                          [this](std::vector<std::string> urls) {
                              if (urls.empty()) {
                                  application_.reopen();
                              } else {
                                  application_.open(std::move(urls));
                              }
                          }});
}

desktop::Helper::Start AgentPlatform::starterOf(const char* helper) const {
    return [program = desktop::helperProgram(helper), system = session_->windowingSystem()] {
        return desktop::startHelper(program, system);
    };
}

AgentPlatform::~AgentPlatform() {
    // A press that came with the end of the X server left a task, which holds the controller; and the controller must
    // be gone before what it refers to.
    mainQueue_.dropTasks();
}

void AgentPlatform::beginAnew() {
    beginsAnew_ = true;
    application_.terminate();
}

std::optional<int> AgentPlatform::run() {
    const int status = application_.run();
    // While the controller is there to take in a store that could not be read until now.
    defaults_.finish();
    return beginsAnew_ ? std::nullopt : std::optional(status);
}

Platform AgentPlatform::abilities() {
    return {application_,
            session_->displays(),
            session_->pointerReader(),
            session_->pointerWarper(),
            session_->hotKeys(),
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
