#include "launchctl/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <variant>
#include <vector>

namespace varnhold::services {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using Words = std::vector<std::string>;

template <class T>
T parsed(const Words& words) {
    const auto command = parseCommandLine(words);
    if (!command || !std::holds_alternative<T>(*command)) {
        ADD_FAILURE() << (command ? "another command" : command.error());
        return {};
    }
    return std::get<T>(*command);
}

std::string refusal(const Words& words) {
    const auto command = parseCommandLine(words);
    return command ? "accepted" : command.error();
}

TEST(CommandLine, ListsEveryJobWithoutALabel) {
    parsed<List>({"list"});
}

TEST(CommandLine, ListsOneJobByItsLabelWhateverItHolds) {
    EXPECT_EQ(parsed<ListJob>({"list", "com.example.a b/c"}).label, "com.example.a b/c");
    EXPECT_EQ(parsed<ListJob>({"list", ""}).label, "");
    EXPECT_EQ(parsed<ListJob>({"list", "-x"}).label, "-x");
}

TEST(CommandLine, BootstrapsOnePathOrSeveralInTheDomainOfAUser) {
    const auto one = parsed<Bootstrap>({"bootstrap", "gui/501", "/a b/c.plist"});
    EXPECT_EQ(one.userId, 501U);
    EXPECT_THAT(one.paths, ElementsAre("/a b/c.plist"));
    EXPECT_THAT(parsed<Bootstrap>({"bootstrap", "gui/0", "a", "b", "a"}).paths,
                ElementsAre("a", "b", "a"));
}

TEST(CommandLine, BootsOutAJobWhoseLabelMayHoldSlashes) {
    const auto command = parsed<Bootout>({"bootout", "gui/501/com.example/odd //label"});
    EXPECT_EQ(command.userId, 501U);
    EXPECT_EQ(command.label, "com.example/odd //label");
}

TEST(CommandLine, KickstartsWithAndWithoutAKill) {
    const auto gentle = parsed<Kickstart>({"kickstart", "gui/501/com.example"});
    EXPECT_FALSE(gentle.kill);
    EXPECT_EQ(gentle.label, "com.example");
    const auto kill = parsed<Kickstart>({"kickstart", "-k", "gui/7/-k"});
    EXPECT_TRUE(kill.kill);
    EXPECT_EQ(kill.userId, 7U);
    EXPECT_EQ(kill.label, "-k");
}

TEST(CommandLine, StopsALabel) {
    EXPECT_EQ(parsed<Stop>({"stop", "com.example"}).label, "com.example");
}

TEST(CommandLine, ShowsHelpAndVersion) {
    parsed<Help>({"--help"});
    parsed<Help>({"help"});
    parsed<Version>({"--version"});
    parsed<Version>({"version"});
}

TEST(CommandLine, NamesWhatIsMissing) {
    EXPECT_EQ(refusal({}), "what is to be done?");
    EXPECT_EQ(refusal({"bootstrap"}), "bootstrap needs a domain and at least one property list");
    EXPECT_EQ(refusal({"bootstrap", "gui/501"}),
              "bootstrap needs a domain and at least one property list");
    EXPECT_EQ(refusal({"bootout"}), "bootout needs one service target");
    EXPECT_EQ(refusal({"kickstart"}), "kickstart needs one service target");
    EXPECT_EQ(refusal({"kickstart", "-k"}), "kickstart needs one service target");
    EXPECT_EQ(refusal({"stop"}), "stop needs one label");
}

TEST(CommandLine, NamesWhatIsTooMuch) {
    EXPECT_EQ(refusal({"list", "a", "b"}), "list takes one label at most");
    EXPECT_EQ(refusal({"bootout", "gui/1/a", "gui/1/b"}), "bootout needs one service target");
    EXPECT_EQ(refusal({"kickstart", "gui/1/a", "-k"}), "kickstart needs one service target");
    EXPECT_EQ(refusal({"kickstart", "-k", "-k", "gui/1/a"}), "kickstart needs one service target");
    EXPECT_EQ(refusal({"stop", "a", "b"}), "stop needs one label");
}

TEST(CommandLine, RefusesVerbsItDoesNotKnow) {
    EXPECT_EQ(refusal({"load", "x"}), "there is no verb \"load\"");
    EXPECT_EQ(refusal({""}), "there is no verb \"\"");
    EXPECT_EQ(refusal({"LIST"}), "there is no verb \"LIST\"");
}

class WrongDomains : public ::testing::TestWithParam<std::string> {};

TEST_P(WrongDomains, AreRefusedByBootstrap) {
    EXPECT_THAT(refusal({"bootstrap", GetParam(), "a.plist"}), HasSubstr("isn't a domain"));
}

INSTANTIATE_TEST_SUITE_P(All, WrongDomains,
                         ::testing::Values("", "501", "gui", "gui/", "gui/x", "gui/-1", "gui/5x",
                                           "gui/501/", "gui/501/label", "system", "GUI/501",
                                           "gui/99999999999999999999", "user/501"));

class WrongTargets : public ::testing::TestWithParam<std::string> {};

TEST_P(WrongTargets, AreRefusedByBootoutAndKickstart) {
    EXPECT_THAT(refusal({"bootout", GetParam()}), HasSubstr("isn't a service target"));
    EXPECT_THAT(refusal({"kickstart", GetParam()}), HasSubstr("isn't a service target"));
    EXPECT_THAT(refusal({"kickstart", "-k", GetParam()}), HasSubstr("isn't a service target"));
}

INSTANTIATE_TEST_SUITE_P(All, WrongTargets,
                         ::testing::Values("", "com.example", "gui/501", "gui/501/", "gui//label",
                                           "gui/x/label", "gui/-1/label", "-x", "--help",
                                           "/gui/501/label"));

TEST(HelpText, NamesEveryVerbAndExitCodeAndFitsATerminal) {
    const std::string help = helpText();
    for (const char* word : {"list", "bootstrap", "bootout", "kickstart", "-k", "stop", "--help",
                             "--version", " 0 ", " 3 ", " 5 ", " 64 ", " 69 ", " 113 ", " 125 "}) {
        EXPECT_THAT(help, HasSubstr(word));
    }
    EXPECT_THAT(help, Not(HasSubstr("\t")));
    EXPECT_EQ(help.back(), '\n');
}

} // namespace
} // namespace varnhold::services
