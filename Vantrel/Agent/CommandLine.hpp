#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantrel {

/// What a command line asks for.
struct CommandLine {
    enum class Request {
        open,         ///< run, and open the URLs
        showHelp,     ///< print the usage
        showVersion,  ///< print the version
        refuse,       ///< say what is wrong and end
    };

    Request request = Request::open;
    std::vector<std::string> urls;  ///< in order, with their text as it came
    std::string problem;            ///< one line; empty unless the request is `refuse`
};

/// Reads the arguments that follow the program's name. URLs are told by their scheme (RFC 3986); "--" ends the options.
CommandLine parseCommandLine(const std::vector<std::string_view>& arguments);

/// The text of --help.
std::string_view usageText();

}  // namespace vantrel
