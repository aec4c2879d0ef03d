#include "records/bots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/json.h"
#include "support/temporary_home.h"

namespace varnhold {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* plain =
    R"({"icon":"🏢","title":"Chief","token":"t1","role":"cos",)"
    R"("launchdLabel":"com.ostrelleai.cos.telegramd","service":"Telegram"})";

std::string with(const std::string& members) {
    std::string text = plain;
    text.pop_back();
    return "[" + text + "," + members + "}]";
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

TEST(BotService, RawValuesMatchToTheLetter) {
    EXPECT_THAT(allBotServices, ElementsAre(BotService::telegram, BotService::slack));
    EXPECT_EQ(rawValue(BotService::telegram), "Telegram");
    EXPECT_EQ(rawValue(BotService::slack), "Slack");
    EXPECT_EQ(botServiceFromRawValue("Telegram"), BotService::telegram);
    EXPECT_EQ(botServiceFromRawValue("Slack"), BotService::slack);
    for (const char* raw : {"telegram", "slack", "TELEGRAM", "Telegram ", "", "Discord"}) {
        EXPECT_EQ(botServiceFromRawValue(raw), std::nullopt) << raw;
    }
}

TEST(BotService, CanBeHashed) {
    const std::unordered_set<BotService> set(allBotServices.begin(), allBotServices.end());
    EXPECT_EQ(set.size(), 2U);
}

TEST(BotConfig, IsMadeFieldByFieldWithTheOptionalOnesAbsent) {
    const BotConfig bot{"i", "t", "k", "r", "l", BotService::slack};
    EXPECT_EQ(bot.prompt, std::nullopt);
    EXPECT_EQ(bot.isPaused, std::nullopt);
    EXPECT_EQ(bot.isSystem, std::nullopt);
    EXPECT_EQ(bot.keepaliveEnabled, std::nullopt);
    EXPECT_EQ(bot.id(), "l");
    EXPECT_FALSE(bot.paused());
}

TEST(BotConfig, KeepaliveIsOnUnlessTheRecordSaysFalse) {
    EXPECT_TRUE(decodeBots(std::string("[") + plain + "]").value()[0].keepaliveOn());
    EXPECT_TRUE(decodeBots(with(R"("keepaliveEnabled":true)")).value()[0].keepaliveOn());
    EXPECT_TRUE(decodeBots(with(R"("keepaliveEnabled":null)")).value()[0].keepaliveOn());
    EXPECT_FALSE(decodeBots(with(R"("keepaliveEnabled":false)")).value()[0].keepaliveOn());
}

TEST(BotConfig, OnlyTruePauses) {
    EXPECT_TRUE(decodeBots(with(R"("isPaused":true)")).value()[0].paused());
    EXPECT_FALSE(decodeBots(with(R"("isPaused":false)")).value()[0].paused());
    EXPECT_FALSE(decodeBots(with(R"("isPaused":null)")).value()[0].paused());
}

TEST(DecodeBots, ReadsEveryField) {
    const auto bots = decodeBots(
        with(R"("prompt":"p","isPaused":true,"isSystem":false,"keepaliveEnabled":true)"));
    const BotConfig expected{.icon = "🏢",
                             .title = "Chief",
                             .token = "t1",
                             .role = "cos",
                             .launchdLabel = "com.ostrelleai.cos.telegramd",
                             .service = BotService::telegram,
                             .prompt = "p",
                             .isPaused = true,
                             .isSystem = false,
                             .keepaliveEnabled = true};
    ASSERT_TRUE(bots);
    EXPECT_THAT(*bots, ElementsAre(expected));
}

TEST(DecodeBots, NullAndMissingOptionalFieldsAreAbsentAndEmptyTextIsNot) {
    const BotConfig bot =
        decodeBots(with(R"("prompt":null,"isPaused":null,"isSystem":null)")).value()[0];
    EXPECT_EQ(bot.prompt, std::nullopt);
    EXPECT_EQ(bot.isPaused, std::nullopt);
    EXPECT_EQ(bot.isSystem, std::nullopt);
    EXPECT_EQ(decodeBots(with(R"("prompt":"")")).value()[0].prompt, "");
}

TEST(DecodeBots, AnyRequiredFieldMissingNullOrOfAnotherTypeRefusesTheFile) {
    const auto fields = {"icon", "title", "token", "role", "launchdLabel", "service"};
    for (const char* field : fields) {
        json::Value record = json::parse(plain).value();
        record.erase(field);
        EXPECT_FALSE(decodeBots("[" + json::compact(record) + "]")) << field;
        record[field] = nullptr;
        EXPECT_FALSE(decodeBots("[" + json::compact(record) + "]")) << field;
        record[field] = 5;
        EXPECT_FALSE(decodeBots("[" + json::compact(record) + "]")) << field;
    }
}

TEST(DecodeBots, AnOptionalFieldOfAnotherTypeRefusesTheFile) {
    for (const char* member :
         {R"("prompt":5)", R"("isPaused":0)", R"("isPaused":1)", R"("isPaused":"true")",
          R"("isSystem":"no")", R"("keepaliveEnabled":[])"}) {
        EXPECT_FALSE(decodeBots(with(member))) << member;
    }
}

TEST(DecodeBots, AServiceInLowerCaseRefusesAllRecordsOfTheFile) {
    const std::string bad = replaced(plain, "Telegram\"", "telegram\"");
    EXPECT_TRUE(decodeBots(std::string("[") + plain + "," + plain + "]"));
    const auto bots = decodeBots(std::string("[") + plain + "," + bad + "]");
    ASSERT_FALSE(bots);
    EXPECT_THAT(bots.error(), ::testing::StartsWith("[1].service: no such service: "));
}

TEST(DecodeBots, AnythingButAListOfRecordsIsRefused) {
    for (const std::string& text : {std::string(), std::string("{}"), std::string("null"),
                                    std::string("[null]"), std::string("[[]]"), std::string(plain),
                                    std::string("[") + plain + "] x", std::string("[") + plain}) {
        EXPECT_FALSE(decodeBots(text)) << text;
    }
    EXPECT_TRUE(decodeBots("[]").value().empty());
}

TEST(EncodeBots, IsCompactInFieldOrderAndLeavesAbsentFieldsOut) {
    EXPECT_EQ(encodeBots({}), "[]");
    EXPECT_EQ(encodeBots(decodeBots(std::string("[") + plain + "]").value()),
              std::string("[") + plain + "]");
    const std::string full =
        with(R"("prompt":"","isPaused":false,"isSystem":true,"keepaliveEnabled":false)");
    EXPECT_EQ(encodeBots(decodeBots(full).value()), full);
}

TEST(EncodeBots, AnUnpausedRecordKeepsItsFalseAndOneWithoutStaysWithout) {
    const std::string said = encodeBots(decodeBots(with(R"("isPaused":false)")).value());
    EXPECT_NE(said.find(R"("isPaused":false)"), std::string::npos);
    const std::string unsaid = encodeBots(decodeBots(std::string("[") + plain + "]").value());
    EXPECT_EQ(unsaid.find("isPaused"), std::string::npos);
}

TEST(EncodeBots, AnUnknownKeyLoadsAndIsLost) {
    const std::string text = with(R"("favourite":{"a":[1,null]})");
    EXPECT_EQ(encodeBots(decodeBots(text).value()), std::string("[") + plain + "]");
}

TEST(EncodeBots, ASlackRecordKeepsItsService) {
    const std::string text = "[" + replaced(plain, "Telegram\"", "Slack\"") + "]";
    const auto bots = decodeBots(text).value();
    EXPECT_EQ(bots[0].service, BotService::slack);
    EXPECT_EQ(encodeBots(bots), text);
}

class LoadBots : public ::testing::Test {
protected:
    void writeFile(const std::string& content) const {
        home.write(constants.botsConfigFile, content);
    }

    testing::TemporaryHome home;
    Constants constants{home.path()};
};

TEST_F(LoadBots, AMissingFileAndAnEmptyListAreAnEmptyFleet) {
    EXPECT_THAT(loadBots(constants), IsEmpty());
    EXPECT_THAT(botRolesInOrder(constants), IsEmpty());
    writeFile("[]");
    EXPECT_THAT(loadBots(constants), IsEmpty());
    EXPECT_THAT(botRolesInOrder(constants), IsEmpty());
}

TEST_F(LoadBots, ReadingDoesNotMakeTheFile) {
    static_cast<void>(loadBots(constants));
    EXPECT_FALSE(readBots(constants.botsConfigFile));
}

TEST_F(LoadBots, OneBadRecordEmptiesTheFleetAndTheFileStays) {
    const std::string content =
        std::string("[") + plain + "," + replaced(plain, "Telegram\"", "telegram\"") + "]";
    writeFile(content);
    EXPECT_THAT(loadBots(constants), IsEmpty());
    EXPECT_THAT(botRolesInOrder(constants), IsEmpty());
    EXPECT_EQ(home.read(constants.botsConfigFile), content);
}

TEST_F(LoadBots, AFolderInThePlaceOfTheFileIsAnEmptyFleet) {
    home.makeFolder(constants.botsConfigFile);
    EXPECT_THAT(loadBots(constants), IsEmpty());
}

TEST_F(LoadBots, RecordsComeInFileOrderAndFreshAtEveryCall) {
    writeFile(std::string("[") + replaced(plain, "\"cos\"", "\"zeta\"") + "," + plain + "]");
    EXPECT_THAT(botRolesInOrder(constants), ElementsAre("zeta", "cos"));
    ASSERT_EQ(loadBots(constants).size(), 2U);
    EXPECT_EQ(loadBots(constants)[0].role, "zeta");
    writeFile(std::string("[") + plain + "]");
    EXPECT_THAT(botRolesInOrder(constants), ElementsAre("cos"));
    EXPECT_EQ(loadBots(constants).size(), 1U);
}

TEST_F(LoadBots, AFileThatABrowserOrEditorMarkedAsUtf8IsRead) {
    writeFile(std::string("\xEF\xBB\xBF[") + plain + "]\n");
    EXPECT_EQ(loadBots(constants).size(), 1U);
}

TEST(LabelOfRole, IsThatOfTheDaemonsForTheRole) {
    EXPECT_EQ(labelOfRole("cos"), "com.ostrelleai.cos.telegramd");
}

TEST_F(LoadBots, ALabelOfTheBuiltInRosterGetsNothingAddedToIt) {
    writeFile(R"([{"icon":"","title":"","token":"","role":"cos",)"
              R"("launchdLabel":"com.ostrelleai.cos.telegramd","service":"Slack"}])");
    const BotConfig bot = loadBots(constants).at(0);
    EXPECT_EQ(bot.icon, "");
    EXPECT_EQ(bot.title, "");
    EXPECT_EQ(bot.service, BotService::slack);
    EXPECT_EQ(bot.isSystem, std::nullopt);
}

} // namespace
} // namespace varnhold
