#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <pwd.h>
#include <string>
#include <unistd.h>

#include "agent_exec/start.h"

namespace varnhold::services {
namespace {

PropertyList listWith(std::map<std::string, std::string> variables) {
    return {.environmentVariables = std::move(variables), .programArguments = {"/bin/true"}};
}

TEST(AgentEnvironment, HasABaseFromThePasswordDatabase) {
    const auto variables = agentEnvironment(listWith({}));
    const passwd* user = ::getpwuid(::getuid()); // NOLINT(concurrency-mt-unsafe)
    ASSERT_NE(user, nullptr);
    EXPECT_EQ(variables.at("PATH"), "/usr/bin:/bin:/usr/sbin:/sbin");
    EXPECT_EQ(variables.at("HOME"), user->pw_dir);
    EXPECT_EQ(variables.at("SHELL"), user->pw_shell);
    EXPECT_EQ(variables.at("USER"), user->pw_name);
    EXPECT_EQ(variables.at("LOGNAME"), user->pw_name);
    EXPECT_EQ(variables.size(), 5U);
}

TEST(AgentEnvironment, TheListOverridesTheBase) {
    const auto variables = agentEnvironment(listWith({{"PATH", "/mine"}, {"HOME", ""}}));
    EXPECT_EQ(variables.at("PATH"), "/mine");
    EXPECT_EQ(variables.at("HOME"), "");
}

TEST(AgentEnvironment, TakesNamesAndValuesAsTheyAre) {
    const auto variables = agentEnvironment(
        listWith({{"X-Y_OAUTH_TOKEN", "two\nlines, 'quotes' and $HOME %n"}, {"ÜBER", "ü"}}));
    EXPECT_EQ(variables.at("X-Y_OAUTH_TOKEN"), "two\nlines, 'quotes' and $HOME %n");
    EXPECT_EQ(variables.at("ÜBER"), "ü");
}

TEST(AgentEnvironment, InheritsNothing) {
    ::setenv("VARNHOLD_TEST_SECRET", "leaked", 1); // NOLINT(concurrency-mt-unsafe)
    EXPECT_FALSE(agentEnvironment(listWith({})).contains("VARNHOLD_TEST_SECRET"));
    ::unsetenv("VARNHOLD_TEST_SECRET"); // NOLINT(concurrency-mt-unsafe)
}

} // namespace
} // namespace varnhold::services
