// locmgr's command line as a whole: the help generated from the option definitions, the
// version, the hints for mistyped names, and the bash completion that must offer what the
// help lists.

#include "Locmgr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace locmgr::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const std::vector<std::string> kCommands{"get",   "stream",   "culture", "batch", "parse",
                                         "check", "coverage", "explain", "pseudo"};

// The options the help of `command` lists ("  --root DIR ...", "  -h [ --help ] ...").
std::set<std::string> OptionsInHelp(const std::string& command) {
    const std::string help = Locmgr({command, "--help"}).out;
    std::set<std::string> options;
    std::istringstream lines(help.substr(help.find("\nOptions:\n")));
    const std::regex option("^  (?:-h \\[ )?(--[a-z-]+)");
    for (std::string line; std::getline(lines, line);) {
        std::smatch match;
        if (std::regex_search(line, match, option)) {
            options.insert(match[1]);
        }
    }
    return options;
}

// What the completion script offers for the command line `words`, the last one being
// completed.
std::set<std::string> Completions(const std::vector<std::string>& words) {
    std::string array;
    for (const std::string& word : words) {
        array += " '" + word + "'";
    }
    const std::string script = "source '" LM_COMPLETION_SCRIPT "' && COMP_WORDS=(locmgr" + array +
                               ") && COMP_CWORD=" + std::to_string(words.size()) +
                               " && _locmgr && printf '%s\\n' \"${COMPREPLY[@]}\"";
    const ProcessResult result = RunProcess({"/bin/bash", "-c", script});
    EXPECT_EQ(0, result.exitStatus) << result.err;
    std::set<std::string> offered;
    std::istringstream lines(result.out);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty()) {
            offered.insert(line);
        }
    }
    return offered;
}

// Each help ends with an example of its command.
void ExpectUsageAndExample(const ProcessResult& help, const std::string& command,
                           const std::string& example) {
    EXPECT_EQ(0, help.exitStatus);
    EXPECT_EQ("", help.err);
    EXPECT_THAT(help.out, ::testing::StartsWith("Usage: locmgr " + command));
    const std::size_t at = help.out.find("\nExample:\n");
    ASSERT_NE(std::string::npos, at);
    EXPECT_THAT(help.out.substr(at), HasSubstr("locmgr " + example));
}

TEST(CommandLineTest, HelpCommandIsTheCommandsHelpOption) {
    const ProcessResult overview = Locmgr({"--help"});
    ExpectUsageAndExample(overview, "", "get");
    for (const std::string& command : kCommands) {
        SCOPED_TRACE(command);
        EXPECT_THAT(overview.out, HasSubstr("\n  " + command + " "));
        const ProcessResult option = Locmgr({command, "--help"});
        const ProcessResult help = Locmgr({"help", command});
        ExpectUsageAndExample(help, command, command);
        EXPECT_EQ(option.out, help.out);
        EXPECT_EQ(0, option.exitStatus);
        EXPECT_EQ("", option.err);
        // Generated from the definitions: every option, including help itself, is listed.
        EXPECT_THAT(help.out, HasSubstr("\nOptions:\n"));
        EXPECT_THAT(help.out, HasSubstr("  -h [ --help ]"));
    }
    EXPECT_EQ(overview.out, Locmgr({"help"}).out);
}

TEST(CommandLineTest, SynopsisMarksRequiredOptionalAndRepeatedOptions) {
    const std::string help = Locmgr({"get", "--help"}).out;
    EXPECT_THAT(help, ::testing::StartsWith("Usage: locmgr get --root DIR [--alt DIR] --scope "
                                            "SCOPE --culture NAME\n"));
    EXPECT_THAT(help,
                HasSubstr(" [--param NAME=VALUE]... [--no-resolver] [--module PATH] KEY...\n"));
    EXPECT_THAT(Locmgr({"check", "--help"}).out, HasSubstr("(default: text)"));
}

TEST(CommandLineTest, VersionIsTheProjectVersion) {
    const ProcessResult result = Locmgr({"--version"});
    EXPECT_EQ(0, result.exitStatus);
    EXPECT_EQ("locmgr " LM_VERSION "\n", result.out);
}

TEST(CommandLineTest, OptionsAndOperandsParseAsTheyAlwaysHave) {
    const std::vector<std::string> get{"get", "--root", kRoot, "--culture", "en"};
    const struct {
        std::vector<std::string> more;
        int exitStatus;
        std::string out;
    } cases[] = {
        {{"--scope=download", "title"}, 0, "Download\n"},
        // The last of a repeated option wins.
        {{"--scope", "settings", "--scope", "download", "title"}, 0, "Download\n"},
        // An empty value is a value, also after "=".
        {{"--scope", "download", "--alt=", "title"}, 0, "Download\n"},
        // After "--" everything is an operand.
        {{"--scope", "download", "--", "title", "--root"}, 1, "Download\n"},
        // The hidden option that collects the operands cannot be named.
        {{"--scope", "download", "--operands", "title"}, 2, ""},
    };
    for (const auto& testCase : cases) {
        std::vector<std::string> arguments = get;
        arguments.insert(arguments.end(), testCase.more.begin(), testCase.more.end());
        const ProcessResult result = Locmgr(arguments);
        SCOPED_TRACE(result.err);
        EXPECT_EQ(testCase.exitStatus, result.exitStatus);
        EXPECT_EQ(testCase.out, result.out);
    }
}

TEST(CommandLineTest, MistypedNamesGetTheNearestKnownOne) {
    const std::vector<std::string> get{"get",      "--root",    kRoot, "--scope",
                                       "download", "--culture", "en"};
    auto with = [&get](const std::vector<std::string>& more) {
        std::vector<std::string> arguments = get;
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    };
    const struct {
        std::vector<std::string> arguments;
        std::string message;
    } cases[] = {
        {with({"--scpoe", "x", "title"}), "unknown option '--scpoe'; did you mean '--scope'?"},
        {with({"--no-reslover", "title"}), "did you mean '--no-resolver'?"},
        {with({"--paramm=a=1", "title"}), "unknown option '--paramm'; did you mean '--param'?"},
        {with({"--hlep"}), "did you mean '--help'?"},
        // Guessing abbreviations is off: a prefix is a mistake to point out.
        {with({"--ro", kRoot, "title"}), "unknown option '--ro'; did you mean '--root'?"},
        {{"check", "--root", kRoot, "--strcit"}, "did you mean '--strict'?"},
        {{"coverage", "--root", kRoot, "--refrence", "de"}, "did you mean '--reference'?"},
        {{"chekc"}, "unknown command 'chekc'; did you mean 'check'?"},
        {{"culure", "ru"}, "did you mean 'culture'?"},
        {{"hlep"}, "did you mean 'help'?"},
        {{"help", "expain"}, "unknown command 'expain'; did you mean 'explain'?"},
        {{"--verison"}, "did you mean '--version'?"},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.message);
        const ProcessResult result = Locmgr(testCase.arguments);
        EXPECT_EQ(2, result.exitStatus);
        EXPECT_EQ("", result.out);
        EXPECT_THAT(result.err, HasSubstr(testCase.message));
    }
    // Nothing is suggested for a name that resembles none.
    for (const auto& arguments : {with({"--zzzzzz", "title"}), std::vector<std::string>{"xyz"}}) {
        const ProcessResult result = Locmgr(arguments);
        EXPECT_EQ(2, result.exitStatus);
        EXPECT_THAT(result.err, Not(HasSubstr("did you mean")));
    }
}

TEST(CompletionTest, OffersExactlyTheOptionsTheHelpLists) {
    for (const std::string& command : kCommands) {
        SCOPED_TRACE(command);
        const std::set<std::string> listed = OptionsInHelp(command);
        ASSERT_FALSE(listed.empty());
        EXPECT_EQ(listed, Completions({command, "--"}));
    }
}

TEST(CompletionTest, CompletesCommandsAndOptionValues) {
    using Set = std::set<std::string>;
    EXPECT_EQ((Set{"check", "culture", "coverage"}), Completions({"c"}));
    EXPECT_EQ((Set{"--version"}), Completions({"--v"}));
    EXPECT_EQ((Set{"--root", "--reference"}), Completions({"coverage", "--r"}));
    EXPECT_EQ((Set{"parse", "pseudo"}), Completions({"help", "p"}));
    EXPECT_EQ((Set{"text", "json", "sarif"}), Completions({"check", "--format", ""}));
    EXPECT_EQ((Set{"json"}), Completions({"explain", "--format", "=", "j"}));
    EXPECT_EQ((Set{"text", "json"}), Completions({"coverage", "--format", "="}));
    EXPECT_EQ((Set{"rtl"}), Completions({"pseudo", "--style", "r"}));
    // Free values have nothing to offer.
    EXPECT_EQ(Set{}, Completions({"get", "--scope", ""}));
}

}  // namespace
}  // namespace locmgr::testing
