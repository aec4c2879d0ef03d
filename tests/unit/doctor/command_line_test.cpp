#include "doctor/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace varnhold::doctor {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(DoctorCommandLine, MakesAllChecksWhereNoneIsNamed) {
    const auto command = parseCommandLine({});
    ASSERT_TRUE(command);
    EXPECT_EQ(command->checks, allChecks());
    EXPECT_FALSE(command->json);
    EXPECT_TRUE(command->color);
}

TEST(DoctorCommandLine, TakesOptionsAndChecksInAnyOrder) {
    const auto command = parseCommandLine({"files", "--data", "/a b/", "--json", "--no-colour"});
    ASSERT_TRUE(command);
    EXPECT_THAT(command->checks, ElementsAre("files"));
    EXPECT_EQ(command->data, "/a b");
    EXPECT_TRUE(command->json);
    EXPECT_FALSE(command->color);
    EXPECT_EQ(parseCommandLine({"--data=/x"})->data, "/x");
    EXPECT_EQ(parseCommandLine({"--data", "/"})->data, "/");
}

TEST(DoctorCommandLine, RefusesWhatItDoesNotKnow) {
    EXPECT_EQ(parseCommandLine({"--dat"}).error(), "there is no option \"--dat\"");
    EXPECT_EQ(parseCommandLine({"fles"}).error(), "there is no check \"fles\"");
    EXPECT_EQ(parseCommandLine({"--data"}).error(), "--data needs a value");
    EXPECT_EQ(parseCommandLine({"--data="}).error(), "--data needs a value");
}

TEST(DoctorCommandLine, LeavesOneProviderOutInsteadOfTheChecks) {
    EXPECT_THAT(parseCommandLine({"--without", "claude"})->checks, ElementsAre("without"));
    EXPECT_THAT(parseCommandLine({"chains", "--without=claude"})->checks,
                ElementsAre("chains", "without"));
    EXPECT_EQ(parseCommandLine({"--without"}).error(), "--without needs a value");
}

TEST(DoctorCommandLine, WatchesTheFleetAndNothingElse) {
    EXPECT_EQ(parseCommandLine({"watch", "--data", "/x"})->kind, Command::Kind::watch);
    EXPECT_FALSE(parseCommandLine({"watch", "files"}));
    EXPECT_FALSE(parseCommandLine({"watch", "--json"}));
    EXPECT_FALSE(parseCommandLine({"watch", "--without", "x"}));
}

TEST(DoctorCommandLine, HelpNamesEveryCheck) {
    EXPECT_EQ(parseCommandLine({"--help"})->kind, Command::Kind::help);
    for (const std::string& check : allChecks()) {
        EXPECT_THAT(helpText(), HasSubstr("  " + check + " "));
    }
}

} // namespace
} // namespace varnhold::doctor
