#include "doctor/chains_check.h"

#include <algorithm>
#include <string>
#include <vector>

#include "doctor/catalogue.h"
#include "doctor/stacks_of_models.h"
#include "doctor/window_state.h"
#include "doctor_home.h"

namespace varnhold::doctor {
namespace {

using testing::botRecord;
using ::testing::Contains;
using testing::DoctorHome;
using ::testing::ElementsAre;
using testing::findingsOf;
using ::testing::HasSubstr;
using testing::idsOf;
using ::testing::IsEmpty;
using testing::labelOf;
using ::testing::Not;
using ::testing::SizeIs;

std::string modelRecord(const std::string& id, const std::string& provider,
                        const std::string& family = "F", const std::string& type = "cli") {
    return R"({"id":")" + id + R"(","name":"N )" + id + R"(","family":")" + family +
           R"(","color":"red","type":")" + type + R"(","provider_key":")" + provider + R"("})";
}

struct Chains : DoctorHome {
    Chains() {
        signIn("openai", "deepseek", "cerebras");
        write(constants.botsConfigFile, "[" + botRecord("a") + "," + botRecord("b") + "]");
    }

    // Keys for these alone, and no way to sign in but keys.
    template <class... Names>
    void signIn(Names... names) {
        const std::vector<std::string> given{names...};
        std::string auth = "{";
        for (const char* maker : {"anthropic", "google", "openai", "mistral", "qwen", "deepseek"}) {
            const bool has = std::find(given.begin(), given.end(), maker) != given.end();
            auth += std::string("\"") + maker + "Method\":\"API Key\",\"" + maker + "Key\":\"" +
                    (has ? "key" : "") + "\",";
        }
        const auto keyOf = [&given](const char* name) {
            return std::find(given.begin(), given.end(), name) == given.end() ? "" : "key";
        };
        write(constants.authConfigFile, auth + R"("openrouterKey":")" + keyOf("openrouter") +
                                            R"(","cerebrasKey":")" + keyOf("cerebras") + "\"}");
    }

    void assign(const std::string& json) { write(constants.chainBotAssignmentsFile, json); }

    [[nodiscard]] Section check() const {
        const WindowState window(around);
        return checkChains(window.fields());
    }
    [[nodiscard]] Section without(const std::string& provider) const {
        const WindowState window(around);
        return checkWithout(window.fields(), provider);
    }
};

TEST(ChainsCheck, NothingIsSaidOfChainsThatAreNotInUse) {
    Chains chains;
    chains.assign("{}");
    const Section section = chains.check();
    EXPECT_THAT(idsOf(section), ElementsAre(ids::botInNoChain));
    EXPECT_EQ(section.data["chains"].size(), 6U);
}

TEST(ChainsCheck, AProviderThatIsNotConnectedIsNamedOnceWithTheReason) {
    Chains chains;
    chains.write(chains.constants.architectPrefsFile, "[" + modelRecord("g1", "gemini") + "," +
                                                          modelRecord("o", "openai") + "," +
                                                          modelRecord("d", "deepseek") + "]");
    chains.write(chains.constants.photoPrefsFile, "[" + modelRecord("g2", "gemini") + "]");
    const auto found = findingsOf(chains.check(), ids::modelNotConnected);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].subject, "Google");
    EXPECT_EQ(found[0].sentence, "Isn't connected, since its key is empty.");
    EXPECT_THAT(found[0].consequence,
                HasSubstr("N g1 in the Architect chain and N g2 in the Photo chain"));
}

TEST(ChainsCheck, ALoginCountsByTheFileThatItLeavesBehind) {
    Chains chains;
    std::string auth = chains.home.read(chains.constants.authConfigFile);
    for (const std::string maker : {"anthropic", "deepseek"}) {
        const std::string from = maker + "Method\":\"API Key\"";
        auth.replace(auth.find(from), from.size(), maker + "Method\":\"Login (OAuth)\"");
    }
    chains.write(chains.constants.authConfigFile, auth);
    chains.write(chains.constants.architectPrefsFile,
                 "[" + modelRecord("c", "claude") + "," + modelRecord("d", "deepseek") + "]");
    auto found = findingsOf(chains.check(), ids::modelNotConnected);
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_THAT(found[0].sentence, HasSubstr("~/.claude.json isn't there"));
    EXPECT_THAT(found[1].sentence, HasSubstr("a login doesn't count for it"));
    chains.write(chains.home.at(".claude.json"), "");
    found = findingsOf(chains.check(), ids::modelNotConnected);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].subject, "DeepSeek");
}

TEST(ChainsCheck, TheKeysThatTheWindowKeepsCountWhereTheFileCannotBeUsed) {
    Chains chains;
    chains.write(chains.constants.authConfigFile, "{");
    chains.write(chains.home.at(".config/OstrelleAI/Varnhold.conf"),
                 "[General]\napi_key_openrouter=k\nauth_method_openai=API Key\n");
    chains.write(chains.constants.workerPrefsFile,
                 "[" + modelRecord("r", "openrouter") + "," + modelRecord("o", "openai") + "]");
    const auto found = findingsOf(chains.check(), ids::modelNotConnected);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].subject, "OpenAI");
}

TEST(ChainsCheck, AChainWithBotsAndNobodyToAnswerIsAFault) {
    Chains chains;
    chains.assign("{\"worker\":[\"" + labelOf("a") + "\"],\"photo\":[\"" + labelOf("b") + "\"]}");
    chains.write(chains.constants.photoPrefsFile, "[" + modelRecord("g", "gemini") + "]");
    const Section section = chains.check();
    const auto empty = findingsOf(section, ids::chainEmpty);
    ASSERT_THAT(empty, SizeIs(1));
    EXPECT_EQ(empty[0].subject, "Coding chain");
    EXPECT_EQ(empty[0].level, Level::fault);
    EXPECT_EQ(findingsOf(section, ids::chainCannotAnswer).at(0).level, Level::fault);
}

TEST(ChainsCheck, CerebrasServesTwoChainsOnly) {
    Chains chains;
    const std::string model = "[" + modelRecord("q", "cerebras", "Cerebras") + "]";
    chains.write(chains.constants.workerPrefsFile, model);
    chains.write(chains.constants.governorChainFile, model);
    const auto found = findingsOf(chains.check(), ids::modelCannotServe);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].subject, "Coding chain");
}

TEST(ChainsCheck, WhatHangsOnOneProviderIsToldWhereABotDependsOnIt) {
    Chains chains;
    chains.write(chains.constants.workerPrefsFile, "[" + modelRecord("o1", "openai") + "," +
                                                       modelRecord("g", "gemini") + "," +
                                                       modelRecord("~gpt-x", "openrouter") + "]");
    EXPECT_THAT(idsOf(chains.check()), Not(Contains(ids::chainOneProvider)));
    chains.assign("{\"worker\":[\"" + labelOf("a") + "\"]}");
    const auto found = findingsOf(chains.check(), ids::chainOneProvider);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].sentence, "Everything hangs on OpenAI.");
}

TEST(ChainsCheck, WhatIsTwiceOrGoneIsTold) {
    Chains chains;
    chains.write(chains.constants.modelLibraryFile,
                 "{\"models\":[" + modelRecord("o", "openai") + "]}");
    chains.write(chains.constants.voicePrefsFile,
                 "[" + modelRecord("o", "openai") + "," + modelRecord("o", "openai") + "," +
                     modelRecord("x", "openai") + "," +
                     modelRecord("local:say", "local", "Local", "local") + "]");
    chains.assign("{\"voice\":[\"nobody\"],\"viola\":[\"" + labelOf("a") + "\"]}");
    chains.write(chains.constants.contextPrefsFile, R"({"voice":-5})");
    const Section section = chains.check();
    EXPECT_EQ(findingsOf(section, ids::modelTwice).at(0).sentence, "More than once in it: o.");
    EXPECT_EQ(findingsOf(section, ids::modelNotInLibrary).at(0).sentence,
              "Not in the library any more: N x.");
    EXPECT_EQ(findingsOf(section, ids::chainBotUnknown).at(0).subject, "Audio chain");
    const WindowState window(chains.around);
    EXPECT_THAT(idsOf(checkChains(window.fields(), false)), Not(Contains(ids::chainBotUnknown)));
    EXPECT_THAT(findingsOf(section, ids::chainUnknown).at(0).sentence, HasSubstr("viola"));
    EXPECT_THAT(idsOf(section), Contains(ids::budgetNegative));
}

TEST(ChainsCheck, GroupsAreListsOfModelsToo) {
    Chains chains;
    chains.write(
        chains.constants.customGroupsFile,
        R"([{"id":"46717E56-E629-5AE3-8B57-A557FDE5BD65","name":"Crew","models":[)" +
            modelRecord("q", "cerebras", "Cerebras") +
            R"(],"effortLevel":"off","contextTokens":0,"colorHex":"","attachedPaths":[)"
            R"("/nowhere/at/all"],"objectives":"","doctrine":[],"assignedBotLabels":["x"]}])");
    const Section section = chains.check();
    EXPECT_EQ(section.data["groups"][0]["models"][0]["canAnswer"], true);
    EXPECT_THAT(idsOf(section), Contains(ids::groupPathMissing));
    EXPECT_EQ(findingsOf(section, ids::chainBotUnknown).at(0).subject, "group Crew");
}

TEST(WithoutCheck, ShowsWhoTakesOverForEachChainAndBot) {
    Chains chains;
    chains.write(chains.constants.workerPrefsFile, "[" + modelRecord("~gpt-x", "openrouter") + "," +
                                                       modelRecord("g", "gemini") + "," +
                                                       modelRecord("d", "deepseek") + "]");
    chains.assign("{\"worker\":[\"" + labelOf("b") + "\"]}");
    const Section openai = chains.without("OpenAI");
    EXPECT_THAT(openai.findings, IsEmpty());
    const auto answers = [](const Section& section) {
        return section.data["bots"].back()["serves"].dump();
    };
    EXPECT_EQ(answers(openai), R"([{"chain":"worker","now":"~gpt-x","then":"d"}])");
    EXPECT_EQ(answers(chains.without("openrouter")),
              R"([{"chain":"worker","now":"~gpt-x","then":"~gpt-x"}])");
    EXPECT_EQ(openai.data["assumptions"].size(), 4U);
    chains.signIn("openai");
    const Section alone = chains.without("codex");
    EXPECT_THAT(idsOf(alone), ElementsAre(ids::withoutNobody));
    EXPECT_EQ(answers(alone), R"([{"chain":"worker","now":"~gpt-x","then":null}])");
}

TEST(WithoutCheck, AProviderThatNoModelHasIsNoGoodNews) {
    const Chains chains;
    EXPECT_THAT(idsOf(chains.without("antropic")), ElementsAre(ids::withoutUnknown));
}

} // namespace
} // namespace varnhold::doctor
