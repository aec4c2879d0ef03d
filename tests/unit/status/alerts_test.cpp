#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "status/menu.h"
#include "status/reauth_alerts.h"
#include "support/temporary_home.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Alerts of a file with this content.
std::vector<ReauthAlert> alertsOf(const std::string& content) {
    const TemporaryHome home;
    const Constants constants(home.path());
    home.write(constants.reauthAlertsFile, content);
    return loadReauthAlerts(constants);
}

TEST(Alerts, KeepTheDayOfATimestamp) {
    EXPECT_THAT(alertsOf(R"({"gemini":{"since":"2026-03-04T05:06:07Z","other":[1]}})"),
                ElementsAre(ReauthAlert{"gemini", "2026-03-04"}));
}

TEST(Alerts, KeepATextThatIsShorterThanADay) {
    EXPECT_THAT(alertsOf(R"({"gemini":{"since":"today"}})"),
                ElementsAre(ReauthAlert{"gemini", "today"}));
}

TEST(Alerts, CountCharactersAsPeopleDo) {
    EXPECT_THAT(alertsOf(R"({"x":{"since":"🇩🇪e\u0301👩🏽‍💻4567890"}})"),
                ElementsAre(ReauthAlert{"x", "🇩🇪e\u0301👩🏽‍💻4567890"}));
    EXPECT_THAT(alertsOf(R"({"x":{"since":"🇩🇪e\u0301👩🏽‍💻4567890!"}})"),
                ElementsAre(ReauthAlert{"x", "🇩🇪e\u0301👩🏽‍💻4567890"}));
}

TEST(Alerts, WhoseValueIsNoObjectOrHasNoTextAreStillAlerts) {
    EXPECT_THAT(alertsOf(R"({"a":1,"b":null,"c":{},"d":{"since":5},"e":["since"]})"),
                ElementsAre(ReauthAlert{"a", ""}, ReauthAlert{"b", ""}, ReauthAlert{"c", ""},
                            ReauthAlert{"d", ""}, ReauthAlert{"e", ""}));
}

TEST(Alerts, AreSortedByPlainTextWithCapitalsFirst) {
    const auto alerts = alertsOf(R"({"qwen":1,"claude":1,"Zeta":1,"codex":1})");
    ASSERT_EQ(alerts.size(), 4U);
    EXPECT_EQ(alerts[0].provider, "Zeta");
    EXPECT_EQ(alerts[1].provider, "claude");
    EXPECT_EQ(alerts[2].provider, "codex");
    EXPECT_EQ(alerts[3].provider, "qwen");
}

TEST(Alerts, OfAMissingOrBrokenFileAreNone) {
    const TemporaryHome home;
    EXPECT_THAT(loadReauthAlerts(Constants(home.path())), IsEmpty());
    EXPECT_THAT(alertsOf(""), IsEmpty());
    EXPECT_THAT(alertsOf("{\"gemini\":"), IsEmpty());
    EXPECT_THAT(alertsOf("[{\"since\":\"x\"}]"), IsEmpty());
    EXPECT_THAT(alertsOf("\"gemini\""), IsEmpty());
    EXPECT_THAT(alertsOf("{}"), IsEmpty());
}

TEST(ProviderName, IsKnownInAnyCase) {
    EXPECT_EQ(providerDisplayName("claude"), "Claude (Anthropic)");
    EXPECT_EQ(providerDisplayName("Anthropic"), "Claude (Anthropic)");
    EXPECT_EQ(providerDisplayName("GEMINI"), "Gemini (Google)");
    EXPECT_EQ(providerDisplayName("google"), "Gemini (Google)");
    EXPECT_EQ(providerDisplayName("codex"), "Codex (OpenAI)");
    EXPECT_EQ(providerDisplayName("OpenAI"), "Codex (OpenAI)");
    EXPECT_EQ(providerDisplayName("qwen"), "Qwen");
    EXPECT_EQ(providerDisplayName("cerebras"), "Cerebras");
    EXPECT_EQ(providerDisplayName("openrouter"), "OpenRouter");
    EXPECT_EQ(providerDisplayName("mlx"), "MLX (local)");
}

TEST(ProviderName, ThatIsUnknownIsCapitalisedWordByWord) {
    EXPECT_EQ(providerDisplayName("mlx-local"), "Mlx-Local");
    EXPECT_EQ(providerDisplayName("my own provider"), "My Own Provider");
    EXPECT_EQ(providerDisplayName("x"), "X");
    EXPECT_EQ(providerDisplayName(""), "");
}

} // namespace
} // namespace varnhold::testing
