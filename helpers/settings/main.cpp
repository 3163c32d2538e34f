// The program that draws the settings window. The agent starts it when the settings are opened, and ends it by hanging
// up; a toolkit in the agent itself would weigh more than all the rest of it.

#include <QApplication>
#include <cstdlib>
#include <string>
#include <utility>

#include "Vantrel/Channel/Channel.hpp"
#include "Vantrel/Channel/SettingsMessages.hpp"
#include "helpers/settings/AgentLink.hpp"
#include "helpers/settings/DesktopColors.hpp"
#include "helpers/settings/QtApplication.hpp"

// Its one argument is Qt's name for the windowing system that the agent serves.
int main(int argumentCount, char* arguments[]) {
    using namespace vantrel;
    Channel agent{FileDescriptor(Channel::helperDescriptor)};
    std::string problem;
    const auto application = qt::QtApplication::start(argumentCount > 1 ? arguments[1] : "xcb", problem);
    if (!application) {
        agent.send(messageOf(WindowProblem{.text = problem}));
        return EXIT_FAILURE;
    }
    const qt::DesktopColors colors;
    const qt::AgentLink link(std::move(agent), [] { QCoreApplication::quit(); });
    return QApplication::exec();
}
