#include "tests/desk/support/AgentProcess.hpp"

#include <fstream>
#include <sstream>
#include <utility>

namespace vantrel::desk {

namespace {

ChildProcessOptions agentOptions(const Environment& environment, const std::filesystem::path& standardError,
                                 const std::vector<std::string>& arguments, const std::vector<std::string>& wrapper) {
    ChildProcessOptions options;
    options.arguments = wrapper;
    options.arguments.emplace_back(VANTREL_PROGRAM);
    options.arguments.insert(options.arguments.end(), arguments.begin(), arguments.end());
    options.environment = environment;
    options.standardError = standardError;
    return options;
}

}  // namespace

AgentProcess::AgentProcess(const Environment& environment, std::filesystem::path standardError,
                           const std::vector<std::string>& arguments, const std::vector<std::string>& wrapper)
    : standardErrorFile_(std::move(standardError)),
      process_(agentOptions(environment, standardErrorFile_, arguments, wrapper)) {}

std::string AgentProcess::standardError() const {
    std::ostringstream text;
    text << std::ifstream(standardErrorFile_).rdbuf();
    return text.str();
}

}  // namespace vantrel::desk
