#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Vantrel/Agent/AgentPlatform.hpp"
#include "Vantrel/Agent/CommandLine.hpp"
#include "Vantrel/Agent/NewStart.hpp"
#include "Vantrel/Agent/OneInstance.hpp"
#include "Vantrel/Agent/ProcessSetup.hpp"
#include "Vantrel/Agent/SessionChoice.hpp"
#include "Vantrel/Controller/AppDelegate.hpp"

namespace {

constexpr int exitWrongArgument = 2;

int print(std::string_view text) {
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    return isWritten ? EXIT_SUCCESS : EXIT_FAILURE;
}

int complain(const std::string& problem, int exitStatus) {
    std::fprintf(stderr, "vantrel: %s\n", problem.c_str());
    return exitStatus;
}

/// The status for the end of the process; none when it is to be started anew.
std::optional<int> runAgent(std::unique_ptr<vantrel::DisplaySession> session, std::vector<std::string> urls) {
    const std::uint32_t hotKeySignature = vantrel::vantrelHotKeySignature;
    const vantrel::EventHandlerProc hotKeyHandler = &vantrel::AppDelegate::hotKeyPressed;
    vantrel::AgentPlatform platform(std::move(session));
    vantrel::desktop::DesktopApplication& app = platform.application();
    const auto delegate = vantrel::AppDelegate::create(platform.abilities(), hotKeySignature, hotKeyHandler);
    app.setDelegate(delegate);
    app.open(std::move(urls));
    return platform.run();
}

int handedOver(const std::vector<std::string>& urls) {
    return urls.empty() ? complain("Vantrel is already running", EXIT_SUCCESS) : EXIT_SUCCESS;
}

int start(std::vector<std::string> urls) {
    std::string problem;
    const auto awaited = vantrel::awaitedWindowingSystem();
    if (!awaited && vantrel::handOverUnconnected(urls)) {
        return handedOver(urls);
    }
    auto session = awaited ? vantrel::awaitDisplaySession(*awaited, problem) : vantrel::chooseDisplaySession(problem);
    if (!session) {
        return complain(problem, EXIT_FAILURE);
    }
    const std::string windowingSystem = session->windowingSystem();
    switch (vantrel::becomeAgentOrHandOver(*session, urls)) {
        case vantrel::StartOutcome::isTheAgent:
            if (const auto status = runAgent(std::move(session), std::move(urls))) {
                return *status;
            }
            vantrel::startAnew(windowingSystem);
            return complain(std::string("cannot start anew: ") + std::strerror(errno), EXIT_FAILURE);
        case vantrel::StartOutcome::handedOver:
            return handedOver(urls);
        case vantrel::StartOutcome::noAnswer:
            break;
    }
    return complain("Vantrel is already running, but does not answer", EXIT_FAILURE);
}

}  // namespace

int main(int argumentCount, char* arguments[]) {
    vantrel::setUpProcess();
    const std::vector<std::string_view> given(arguments + (argumentCount > 0 ? 1 : 0), arguments + argumentCount);
    vantrel::CommandLine commandLine = vantrel::parseCommandLine(given);
    switch (commandLine.request) {
        case vantrel::CommandLine::Request::showHelp:
            return print(vantrel::usageText());
        case vantrel::CommandLine::Request::showVersion:
            return print("vantrel " VANTREL_VERSION "\n");
        case vantrel::CommandLine::Request::refuse:
            return complain(commandLine.problem, exitWrongArgument);
        case vantrel::CommandLine::Request::open:
            break;
    }
    return start(std::move(commandLine.urls));
}
