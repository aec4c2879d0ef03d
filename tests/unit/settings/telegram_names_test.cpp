#include "settings/telegram_names.h"

#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

#include "support/fake_platform.h"
#include "support/records.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string reply(const std::string& name) {
    return R"({"ok":true,"result":{"id":1,"is_bot":true,"first_name":")" + name + R"("}})";
}

struct Fetch {
    FakePlatform platform;
    int completions = 0;
    std::vector<BotConfig> result;

    void start(std::vector<BotConfig> bots) {
        fetchTelegramNames(platform.interfaces, std::move(bots), [this](auto named) {
            ++completions;
            result = std::move(named);
        });
    }
    [[nodiscard]] std::vector<std::string> titles() const {
        std::vector<std::string> all;
        for (const BotConfig& bot : result) {
            all.push_back(bot.title);
        }
        return all;
    }
};

TEST(TelegramNames, AskForEveryBotAtOnceAtTheTokensOwnAddress) {
    Fetch fetch;
    fetch.start(
        {bot("Old", {.token = "1:a"}), bot("Old", {.token = "2:b"}), bot("Old", {.token = "3:c"})});
    EXPECT_THAT(fetch.platform.http.urls, ElementsAre("https://api.telegram.org/bot1:a/getMe",
                                                      "https://api.telegram.org/bot2:b/getMe",
                                                      "https://api.telegram.org/bot3:c/getMe"));
}

TEST(TelegramNames, ASlackRecordIsNeverAskedAboutEvenWithAToken) {
    Fetch fetch;
    fetch.start({bot("Slack", {.token = "xoxb-1", .service = BotService::slack}), bot("Bare")});
    EXPECT_THAT(fetch.platform.http.urls, IsEmpty());
    fetch.platform.settle();
    EXPECT_THAT(fetch.titles(), ElementsAre("Slack", "Bare"));
}

TEST(TelegramNames, PutEachAnswerInItsPlaceWhateverTheOrderOfArrival) {
    Fetch fetch;
    fetch.start({bot("Old", {.token = "1"}), bot("Bare"), bot("Old", {.token = "2"}),
                 bot("Old", {.token = "3"})});
    fetch.platform.http.answer(2, reply("Three"));
    fetch.platform.http.answer(0, reply("One"));
    fetch.platform.http.answer(1, reply("Two"));
    fetch.platform.settle();
    EXPECT_THAT(fetch.titles(), ElementsAre("One", "Bare", "Two", "Three"));
}

TEST(TelegramNames, ChangeNothingButTheTitle) {
    Fetch fetch;
    BotConfig agent = bot("Old", {.token = "1"});
    agent.prompt = "p";
    agent.isPaused = true;
    fetch.start({agent});
    fetch.platform.http.answer(0, reply("New"));
    fetch.platform.settle();
    agent.title = "New";
    EXPECT_THAT(fetch.result, ElementsAre(agent));
}

TEST(TelegramNames, CompleteOnceAndOnlyWhenAllHaveAnswered) {
    Fetch fetch;
    fetch.start({bot("Old", {.token = "1"}), bot("Old", {.token = "2"})});
    fetch.platform.http.answer(1, reply("Two"));
    fetch.platform.settle();
    EXPECT_EQ(fetch.completions, 0);
    fetch.platform.http.answer(0, "");
    EXPECT_EQ(fetch.completions, 0); // not on the road of the answer either
    fetch.platform.settle();
    EXPECT_EQ(fetch.completions, 1);
    EXPECT_THAT(fetch.titles(), ElementsAre("Old", "Two"));
}

TEST(TelegramNames, CompleteLaterEvenWhereThereIsNobodyToAskFor) {
    Fetch fetch;
    fetch.start({});
    EXPECT_EQ(fetch.completions, 0);
    EXPECT_THAT(fetch.platform.record, ElementsAre("post main"));
    fetch.platform.settle();
    EXPECT_EQ(fetch.completions, 1);
    EXPECT_THAT(fetch.result, IsEmpty());
}

TEST(TelegramNames, AnEmptyNameIsANameAndLeavesTheTitleEmpty) {
    Fetch fetch;
    fetch.start({bot("Old", {.token = "1"})});
    fetch.platform.http.answer(0, reply(""));
    fetch.platform.settle();
    EXPECT_THAT(fetch.titles(), ElementsAre(""));
}

TEST(TelegramNames, TwoFetchesDoNotMixTheirAnswers) {
    Fetch first;
    int second = 0;
    first.start({bot("A", {.token = "1"})});
    fetchTelegramNames(first.platform.interfaces, {bot("B", {.token = "2"})},
                       [&](const auto& bots) {
                           ++second;
                           EXPECT_EQ(bots.front().title, "Second");
                       });
    first.platform.http.answer(1, reply("Second"));
    first.platform.http.answer(0, reply("First"));
    first.platform.settle();
    EXPECT_THAT(first.titles(), ElementsAre("First"));
    EXPECT_EQ(second, 1);
}

TEST(NameInReply, IsAbsentFromAnErrorObjectWithoutAResult) {
    EXPECT_EQ(nameInReply(R"({"ok":false,"error_code":401,"description":"Unauthorized"})"),
              std::nullopt);
}

TEST(NameInReply, IsAllThatCountsWhateverTheReplySaysOfItself) {
    EXPECT_EQ(nameInReply(R"({"ok":false,"error_code":500,"result":{"first_name":"N"}})"), "N");
    EXPECT_EQ(nameInReply(R"({"result":{"first_name":"⚖️ Bot"}})"), "⚖️ Bot");
}

TEST(NameInReply, MayBeEmpty) {
    EXPECT_EQ(nameInReply(R"({"result":{"first_name":""}})"), "");
}

TEST(NameInReply, IsAbsentFromWhateverIsNoObjectWithAResultThatHasOne) {
    const std::vector<std::string> bodies{"",
                                          " ",
                                          "null",
                                          "[]",
                                          "\"first_name\"",
                                          "<html></html>",
                                          "{",
                                          R"({"result":{"first_name":"N"}} x)",
                                          R"({"result":[{"first_name":"N"}]})",
                                          R"({"result":"first_name"})",
                                          R"({"result":null})",
                                          R"({"result":{}})",
                                          R"({"result":{"first_name":5}})",
                                          R"({"result":{"first_name":null}})",
                                          R"({"result":{"First_name":"N"}})",
                                          R"({"first_name":"N"})",
                                          "{\"result\":{\"first_name\":\"\xFF\"}}",
                                          std::string("\0\0\0", 3)};
    for (const std::string& body : bodies) {
        EXPECT_EQ(nameInReply(body), std::nullopt) << body;
    }
}

} // namespace
} // namespace varnhold::testing
