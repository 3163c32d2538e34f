#include "Vantrel/Agent/CommandLine.hpp"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

// Without the locale, in which other characters may be letters.
bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isSchemeCharacter(char character) {
    return isLetter(character) || (character >= '0' && character <= '9') || character == '+' || character == '-' ||
           character == '.';
}

/// RFC 3986, section 3.1.
bool hasScheme(std::string_view text) {
    const std::string_view scheme = text.substr(0, text.find(':'));
    return scheme.size() < text.size() && !scheme.empty() && isLetter(scheme.front()) &&
           std::all_of(scheme.begin(), scheme.end(), isSchemeCharacter);
}

/// The text in quotation marks, with what a terminal would obey instead of showing it replaced, and not too long for a
/// line.
std::string quoted(std::string_view text) {
    constexpr std::size_t longest = 60;
    std::string result = "\"";
    for (const char character : text.substr(0, longest)) {
        const auto code = static_cast<unsigned char>(character);
        result += code < 0x20 || code == 0x7F ? '?' : character;
    }
    return result + (text.size() > longest ? "...\"" : "\"");
}

CommandLine refusal(std::string problem) {
    return {CommandLine::Request::refuse, {}, std::move(problem) + " (try --help)"};
}

}  // namespace

CommandLine parseCommandLine(const std::vector<std::string_view>& arguments) {
    CommandLine commandLine;
    bool optionsMayCome = true;
    for (const std::string_view argument : arguments) {
        if (optionsMayCome && argument == "--") {
            optionsMayCome = false;
        } else if (optionsMayCome && argument == "--help") {
            return {CommandLine::Request::showHelp, {}, {}};
        } else if (optionsMayCome && argument == "--version") {
            return {CommandLine::Request::showVersion, {}, {}};
        } else if (optionsMayCome && argument.size() > 1 && argument.front() == '-') {
            return refusal("unknown option " + quoted(argument));
        } else if (!hasScheme(argument)) {
            return refusal("not a URL: " + quoted(argument));
        } else {
            commandLine.urls.emplace_back(argument);
        }
    }
    return commandLine;
}

std::string_view usageText() {
    return "Usage: vantrel [--help] [--version] [URL]...\n"
           "\n"
           "Carries the mouse pointer from display to display, by hot keys, a menu and URLs. Without a running\n"
           "Vantrel on the display this starts one, which then opens the URLs; otherwise the running one opens them.\n"
           "\n"
           "  vantrel://next, vantrel://previous   to the next or the previous display\n"
           "  vantrel://teleport                   the same: ?direction=next or ?direction=previous;\n"
           "                                       ?mode=manual to the next saved point\n"
           "  vantrel://manual                     to the next saved point\n"
           "  vantrel://save-point                 saves where the pointer is\n"
           "\n"
           "  --help     prints this text\n"
           "  --version  prints the version\n"
           "\n"
           "Ends with 0, with 1 where no display can be served, with 2 for a wrong argument.\n";
}

}  // namespace vantrel
