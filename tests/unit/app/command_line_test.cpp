#include "app/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "shell/version.h"

namespace varnhold::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using Request = CommandLine::Request;

TEST(CommandLine, WithoutWordsRunsTheProgram) {
    EXPECT_EQ(readCommandLine({}).request, Request::run);
}

TEST(CommandLine, TellsHowTheProgramIsUsed) {
    const CommandLine line = readCommandLine({"--help"});
    EXPECT_EQ(line.request, Request::tell);
    EXPECT_THAT(line.text, StartsWith("Usage: varnhold\n"));
}

TEST(CommandLine, TellsTheProjectsVersion) {
    const CommandLine line = readCommandLine({"--version"});
    EXPECT_EQ(line.request, Request::tell);
    EXPECT_EQ(line.text, std::string("varnhold ") + version + "\n");
}

TEST(CommandLine, RefusesEverythingElseAndNamesIt) {
    for (const std::string word : {"-h", "--Help", "help", "", "-platform", "--version=1", "a b"}) {
        const CommandLine line = readCommandLine({word});
        EXPECT_EQ(line.request, Request::refuse) << word;
        EXPECT_THAT(line.text, HasSubstr("\"" + word + "\""));
        EXPECT_THAT(line.text, HasSubstr("Usage: "));
    }
    const CommandLine line = readCommandLine({"--help", "me"});
    EXPECT_EQ(line.request, Request::refuse);
    EXPECT_THAT(line.text, HasSubstr("\"me\""));
}

TEST(CommandLine, TakesASessionManagersWord) {
    EXPECT_EQ(readCommandLine({"-session", "10a2_1"}).request, Request::run);
    EXPECT_EQ(readCommandLine({"-session"}).request, Request::refuse);
    EXPECT_EQ(readCommandLine({"-session", "1", "more"}).request, Request::refuse);
}

} // namespace
} // namespace varnhold::testing
