#include "tests/desk/program/ProgramRun.hpp"

#include <fstream>
#include <sstream>
#include <utility>

#include "tests/desk/support/TemporaryDirectory.hpp"

namespace vantrel::desk {

namespace {

ProgramOutcome run(const Environment& environment, std::vector<std::string> arguments) {
    const TemporaryDirectory directory("outcome");
    ChildProcessOptions options;
    options.arguments = std::move(arguments);
    options.environment = environment;
    options.standardOutput = directory.path() / "stdout";
    options.standardError = directory.path() / "stderr";
    ChildProcess process(options);
    const auto status = process.waitForExit();
    return {.exitCode = status ? status->code : std::nullopt,
            .standardOutput = contentOf(options.standardOutput),
            .standardError = contentOf(options.standardError)};
}

}  // namespace

std::vector<std::string> scriptArguments(const std::string& script) {
    return {"sh", "-c", "VANTREL='" VANTREL_PROGRAM "'\n" + script};
}

ProgramOutcome runVantrel(const Environment& environment, const std::vector<std::string>& arguments) {
    std::vector<std::string> all{VANTREL_PROGRAM};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return run(environment, std::move(all));
}

ProgramOutcome runScript(const Environment& environment, const std::string& script) {
    return run(environment, scriptArguments(script));
}

std::string contentOf(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
}

}  // namespace vantrel::desk
