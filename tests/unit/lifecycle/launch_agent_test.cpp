#include "lifecycle/launch_agent.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <sys/stat.h>

#include "fleet_fixture.h"
#include "shell/daemon_code.h"

namespace varnhold {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using Variables = std::map<std::string, std::string>;

class GeneratePlist : public FleetFixture {
protected:
    [[nodiscard]] PropertyList written(const std::string& label) const {
        return decodePropertyList(home.read(plistPath(label))).value();
    }
    [[nodiscard]] PropertyList generated(const BotConfig& bot) const {
        EXPECT_EQ(generatePlist(context, bot), plistPath(bot.launchdLabel));
        return written(bot.launchdLabel);
    }
    [[nodiscard]] Variables environmentOf(const BotConfig& bot) const {
        return generated(bot).environmentVariables;
    }
    [[nodiscard]] Variables fixedVariables() const {
        return {{"HOME", home.path()},
                {"PATH", "/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin"},
                {"PYTHONPATH", home.at("daemon")},
                {"DAEMON_RESOURCES", home.at("daemon")},
                {"DAEMON_DATA_DIR", home.at("Library/Application Support/Varnhold")}};
    }
    static BotConfig withToken() { return bot("cos", {.token = "token-cos"}); }
};

TEST_F(GeneratePlist, LooksForTheInterpreterAndTheDaemonCodeAtEachStart) {
    fake.isThere = [](const std::string&) { return false; };
    EXPECT_EQ(generated(bot("cos")).programArguments.front(), "/usr/bin/python3");
    fake.isThere = [](const std::string&) { return true; };
    const PropertyList later = generated(bot("cos"));
    EXPECT_EQ(later.programArguments.front(), "/opt/homebrew/bin/python3.14");
    EXPECT_EQ(later.workingDirectory, fake.bundle + "/Contents/Resources/daemon");
}

TEST_F(GeneratePlist, HoldsTheEightValuesOfTheAgent) {
    Variables variables = fixedVariables();
    variables["TELEGRAM_BOT_TOKEN"] = "token-cos";
    EXPECT_EQ(
        generated(withToken()),
        (PropertyList{.label = "com.ostrelleai.cos.telegramd",
                      .keepAlive = true,
                      .runAtLoad = true,
                      .environmentVariables = variables,
                      .programArguments = {findPython(context.platform.system), "-m",
                                           "provider_telegramd", "--dept", "cos", "--data-dir",
                                           home.at("Library/Application "
                                                   "Support/Varnhold/data/cos")},
                      .workingDirectory = home.at("daemon"),
                      .standardOutPath = "/tmp/vh-cos.log",
                      .standardErrorPath = "/tmp/vh-cos-error.log"}));
}

TEST_F(GeneratePlist, HasNoOtherKeys) {
    generatePlist(context, bot("cos"));
    const std::string text = home.read(plistOf("cos"));
    std::size_t keys = 0;
    for (std::size_t at = text.find("\n\t<key>"); at != std::string::npos;
         at = text.find("\n\t<key>", at + 1)) {
        ++keys;
    }
    EXPECT_EQ(keys, 8U);
}

TEST_F(GeneratePlist, WritesTheFileInPlaceSoThatItsOtherNamesSeeIt) {
    home.write(plistOf("cos"), "old");
    const std::string other = home.at("kept-elsewhere.plist");
    fs::create_hard_link(plistOf("cos"), other);
    ASSERT_EQ(generatePlist(context, bot("cos")), plistOf("cos"));
    EXPECT_TRUE(fs::equivalent(plistOf("cos"), other));
    EXPECT_EQ(home.read(other), home.read(plistOf("cos")));
    EXPECT_NE(home.read(other), "old");
}

TEST_F(GeneratePlist, ABundleWithDaemonCodeIsItsOwnResourceFolder) {
    const std::string inside = fake.bundle + "/Contents/Resources/daemon";
    home.makeFolder(inside);
    const PropertyList list = generated(bot("cos"));
    EXPECT_EQ(list.workingDirectory, inside);
    EXPECT_EQ(list.environmentVariables.at("PYTHONPATH"), inside);
    EXPECT_EQ(list.environmentVariables.at("DAEMON_RESOURCES"), inside);
}

TEST_F(GeneratePlist, TheGovernorHasNoneAndNoFileAppears) {
    EXPECT_EQ(generatePlist(context, governorBot()), std::nullopt);
    EXPECT_FALSE(fs::exists(constants.launchAgentsDir));
}

TEST_F(GeneratePlist, OnlyTheEndingOfTheLabelDecides) {
    BotConfig agent = withToken();
    for (const char* label : {"com.ostrelleai.cos", "com.ostrelleai.cos.telegramd2",
                              "com.ostrelleai.cos.Telegramd", "telegramd", "", "a.telegramd "}) {
        agent.launchdLabel = label;
        EXPECT_FALSE(isStartable(agent)) << label;
        EXPECT_EQ(generatePlist(context, agent), std::nullopt) << label;
    }
    for (const char* label : {"com.ostrelleai.cos.telegramd", ".telegramd", "x.telegramd"}) {
        agent.launchdLabel = label;
        EXPECT_TRUE(isStartable(agent)) << label;
        EXPECT_EQ(generatePlist(context, agent), plistPath(label)) << label;
    }
}

TEST_F(GeneratePlist, ASlackRecordGetsTheSameFile) {
    BotConfig agent = withToken();
    generatePlist(context, agent);
    const std::string telegram = home.read(plistOf("cos"));
    agent.service = BotService::slack;
    generatePlist(context, agent);
    EXPECT_EQ(home.read(plistOf("cos")), telegram);
    EXPECT_EQ(environmentOf(agent).at("TELEGRAM_BOT_TOKEN"), "token-cos");
}

TEST_F(GeneratePlist, APausedRecordGetsAFileToo) {
    EXPECT_EQ(generatePlist(context, bot("cos", {.isPaused = true})), plistOf("cos"));
    EXPECT_TRUE(fs::exists(plistOf("cos")));
}

TEST_F(GeneratePlist, AnEmptyTokenLeavesItsVariableOut) {
    EXPECT_EQ(environmentOf(bot("cos")), fixedVariables());
}

TEST_F(GeneratePlist, KeysAndTokensOfTheSignInFileBecomeVariables) {
    writeSignIn(R"({"anthropicKey":"k1","openaiKey":"","oauthTokens":{"x-y":"t1"}})");
    Variables expected = fixedVariables();
    expected["ANTHROPIC_API_KEY"] = "k1";
    expected["X-Y_OAUTH_TOKEN"] = "t1";
    EXPECT_EQ(environmentOf(bot("cos")), expected);
}

TEST_F(GeneratePlist, ASignInFileThatCannotBeReadLeavesNoKeys) {
    for (const char* content : {"", "[]", "\"x\"", "{\"openaiKey\":\"b\"", "{\"openaiKey\":\"b\"}x",
                                "{\"openaiKey\":\"\xFF\"}"}) {
        writeSignIn(content);
        EXPECT_EQ(environmentOf(bot("cos")), fixedVariables()) << content;
    }
    fs::remove(constants.authConfigFile);
    EXPECT_EQ(environmentOf(bot("cos")), fixedVariables());
    home.makeFolder(constants.authConfigFile);
    EXPECT_EQ(environmentOf(bot("cos")), fixedVariables());
}

TEST_F(GeneratePlist, KeysOfAnEarlierFileDoNotOutliveABrokenSignInFile) {
    writeSignIn(R"({"openaiKey":"b"})");
    EXPECT_EQ(environmentOf(bot("cos")).at("OPENAI_API_KEY"), "b");
    writeSignIn("broken");
    EXPECT_FALSE(environmentOf(bot("cos")).contains("OPENAI_API_KEY"));
}

TEST_F(GeneratePlist, ARoleWithABlankGoesUnchangedIntoArgumentsAndLogs) {
    const PropertyList list = generated(bot("chief of staff"));
    EXPECT_EQ(list.programArguments.at(4), "chief of staff");
    EXPECT_EQ(list.programArguments.at(6), constants.appSupportDir + "/data/chief of staff");
    EXPECT_EQ(list.standardOutPath, "/tmp/vh-chief of staff.log");
    EXPECT_EQ(list.standardErrorPath, "/tmp/vh-chief of staff-error.log");
}

TEST_F(GeneratePlist, TwoLabelsWithOneRoleShareLogAndDataFolder) {
    const PropertyList a = generated(bot("cos"));
    const PropertyList b = generated(bot("cos", {.label = labelOf("other")}));
    EXPECT_NE(a.label, b.label);
    EXPECT_EQ(a.programArguments, b.programArguments);
    EXPECT_EQ(a.standardOutPath, b.standardOutPath);
    EXPECT_EQ(a.standardErrorPath, b.standardErrorPath);
}

TEST_F(GeneratePlist, APlaceThatTakesNoFileStillGivesThePath) {
    home.write(constants.launchAgentsDir, "a file where a folder should be");
    EXPECT_EQ(generatePlist(context, bot("cos")), plistOf("cos"));
    EXPECT_EQ(home.read(constants.launchAgentsDir), "a file where a folder should be");
}

TEST_F(GeneratePlist, AFolderInThePlaceOfTheFileStillGivesThePath) {
    home.makeFolder(plistOf("cos"));
    EXPECT_EQ(generatePlist(context, bot("cos")), plistOf("cos"));
    EXPECT_TRUE(fs::is_directory(plistOf("cos")));
}

TEST_F(GeneratePlist, TextThatNoFileCanCarryGivesNoneAndLeavesTheOldFile) {
    generatePlist(context, bot("cos"));
    const std::string before = home.read(plistOf("cos"));
    BotConfig agent = withToken();
    agent.token = "bad\x01token";
    EXPECT_EQ(generatePlist(context, agent), std::nullopt);
    EXPECT_EQ(home.read(plistOf("cos")), before);
    EXPECT_FALSE(before.empty());
}

TEST_F(GeneratePlist, WritesOverTheOldFileInPlace) {
    home.write(plistOf("cos"), std::string(100000, 'x'));
    ::chmod(plistOf("cos").c_str(), 0600);
    generatePlist(context, bot("cos"));
    struct stat found {};
    ASSERT_EQ(::stat(plistOf("cos").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777U, 0600U);
    EXPECT_EQ(written("com.ostrelleai.cos.telegramd").label, "com.ostrelleai.cos.telegramd");
}

TEST_F(GeneratePlist, DoesNotMakeTheAgentsDataFolder) {
    generatePlist(context, bot("cos"));
    EXPECT_FALSE(fs::exists(constants.appSupportDir + "/data"));
}

TEST_F(GeneratePlist, RunsNoChildProcess) {
    generatePlist(context, bot("cos"));
    EXPECT_TRUE(fake.record.empty());
}

TEST_F(GeneratePlist, RegeneratingWritesEveryStartableAgentThatIsNotPaused) {
    writeBots({bot("cos"), bot("cto", {.isPaused = true}), governorBot(), bot("ea")});
    regenerateAllPlists(context);
    EXPECT_TRUE(fs::exists(plistOf("cos")));
    EXPECT_FALSE(fs::exists(plistOf("cto")));
    EXPECT_FALSE(fs::exists(plistPath("com.ostrelleai.governor")));
    EXPECT_TRUE(fs::exists(plistOf("ea")));
    EXPECT_TRUE(fake.record.empty());
}

TEST(LogPath, IsNamedByRole) {
    EXPECT_EQ(logPath("cos"), "/tmp/vh-cos.log");
    EXPECT_EQ(logPath("chief of staff"), "/tmp/vh-chief of staff.log");
}

} // namespace
} // namespace varnhold
