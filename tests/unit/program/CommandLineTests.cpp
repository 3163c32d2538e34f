#include "Vantrel/Agent/CommandLine.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace vantrel {
namespace {

using Arguments = std::vector<std::string_view>;
using URLs = std::vector<std::string>;
using Request = CommandLine::Request;

TEST(CommandLine, parse_noArguments_opensNothing) {
    const CommandLine commandLine = parseCommandLine({});
    EXPECT_EQ(commandLine.request, Request::open);
    EXPECT_TRUE(commandLine.urls.empty());
}

TEST(CommandLine, parse_urls_keepTheirTextAndOrder) {
    const Arguments urls{
        "vantrel://next", "VANTREL:%2D", "https://example.org/?a=b", "a:", "x-y+z.1:\xff\xfe", "vantrel:a b\n"};
    const CommandLine commandLine = parseCommandLine(urls);
    EXPECT_EQ(commandLine.request, Request::open);
    EXPECT_EQ(commandLine.urls, URLs(urls.begin(), urls.end()));
}

TEST(CommandLine, parse_noScheme_isRefused) {
    for (const std::string_view argument : {"", "next", "vantrel", "/etc/passwd", "//host", "://next", ":", "1a:b", "-",
                                            "a b:c", "a/b:c", "\xc3\xa4:b", "+a:b", "vantrel%3Anext"}) {
        const CommandLine commandLine = parseCommandLine({"vantrel://next", argument});
        EXPECT_EQ(commandLine.request, Request::refuse) << argument;
        EXPECT_TRUE(commandLine.urls.empty());
        EXPECT_EQ(commandLine.problem, "not a URL: \"" + std::string(argument) + "\" (try --help)");
    }
}

TEST(CommandLine, parse_unknownOption_isRefused) {
    for (const std::string_view argument : {"-h", "--Help", "--help=x", "--verbose", "-x:y", "--vantrel:next", "---"}) {
        const CommandLine commandLine = parseCommandLine({argument});
        EXPECT_EQ(commandLine.request, Request::refuse) << argument;
        EXPECT_EQ(commandLine.problem, "unknown option \"" + std::string(argument) + "\" (try --help)");
    }
}

TEST(CommandLine, parse_strangeText_isQuotedInOneShortLine) {
    EXPECT_EQ(parseCommandLine({"a\nb\x1b[31m\x7f"}).problem, "not a URL: \"a?b?[31m?\" (try --help)");
    EXPECT_EQ(parseCommandLine({std::string(100000, 'x')}).problem,
              "not a URL: \"" + std::string(60, 'x') + "...\" (try --help)");
}

TEST(CommandLine, parse_helpOrVersion_isShownWhateverFollows) {
    EXPECT_EQ(parseCommandLine({"--help"}).request, Request::showHelp);
    EXPECT_EQ(parseCommandLine({"--version"}).request, Request::showVersion);
    EXPECT_EQ(parseCommandLine({"vantrel:next", "--help", "--bogus"}).request, Request::showHelp);
    EXPECT_EQ(parseCommandLine({"--version", "--help"}).request, Request::showVersion);
    EXPECT_TRUE(parseCommandLine({"vantrel:next", "--version"}).urls.empty());
}

TEST(CommandLine, parse_doubleDash_endsTheOptions) {
    EXPECT_EQ(parseCommandLine({"--", "vantrel:next"}).urls, URLs{"vantrel:next"});
    EXPECT_TRUE(parseCommandLine({"--"}).urls.empty());
    EXPECT_EQ(parseCommandLine({"--"}).request, Request::open);
    EXPECT_EQ(parseCommandLine({"--", "--help"}).problem, "not a URL: \"--help\" (try --help)");
    EXPECT_EQ(parseCommandLine({"--", "--"}).problem, "not a URL: \"--\" (try --help)");
}

TEST(CommandLine, usage_namesEveryOptionAndCommand) {
    for (const std::string_view word : {"--help", "--version", "vantrel://next", "vantrel://previous",
                                        "vantrel://teleport", "vantrel://manual", "vantrel://save-point"}) {
        EXPECT_NE(usageText().find(word), std::string_view::npos) << word;
    }
    EXPECT_EQ(usageText().back(), '\n');
}

}  // namespace
}  // namespace vantrel
