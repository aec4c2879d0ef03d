#include <QSignalSpy>
#include <string>
#include <vector>

#include "modelled_settings.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct ProviderRows : ModelledSettings {
    ProviderRows() { modelled(); }

    [[nodiscard]] ProvidersPart& providers() const { return *model->providers(); }
    [[nodiscard]] std::vector<std::string> shown(const char* name) const {
        return column(*providers().authRows(), name);
    }
    [[nodiscard]] std::vector<std::string> shownKeys(const char* name) const {
        return column(*providers().keyRows(), name);
    }
};

TEST(ProvidersPart, ShowsThoseWithTwoWaysAboveThoseWithKeysOnly) {
    const ProviderRows settings;
    EXPECT_THAT(settings.shown("name"),
                ElementsAre("Anthropic", "Google", "OpenAI", "Qwen", "DeepSeek"));
    EXPECT_THAT(settings.shown("method"),
                ElementsAre("Login (OAuth)", "Login (OAuth)", "API Key", "API Key", "API Key"));
    EXPECT_THAT(settings.shown("tag"), ElementsAre("", "", "", "", ""));
    EXPECT_THAT(settings.shownKeys("name"), ElementsAre("OpenRouter", "Cerebras"));
    EXPECT_THAT(settings.shownKeys("tag"), ElementsAre("(no tools)", "(governor)"));
    EXPECT_EQ(settings.providers().methods(),
              (QStringList{QStringLiteral("Login (OAuth)"), QStringLiteral("API Key")}));
}

TEST(ProvidersPart, TakesAKeyOfAnyKindForASignIn) {
    ProviderRows settings;
    settings.providers().setApiKey(2, QStringLiteral("k"));
    settings.providers().setOnlyKey(1, QStringLiteral(" "));
    EXPECT_EQ(settings.view->openaiKey, "k");
    EXPECT_EQ(settings.view->cerebrasKey, " ");
    EXPECT_THAT(settings.shown("isAuthorized"),
                ElementsAre("false", "false", "true", "false", "false"));
    EXPECT_THAT(settings.shownKeys("isAuthorized"), ElementsAre("false", "true"));
}

TEST(ProvidersPart, SavesEachEditAtOnce) {
    ProviderRows settings;
    const auto stored = [&] { return *readAuthConfig(settings.constants.authConfigFile); };
    settings.providers().setApiKey(2, QStringLiteral("k"));
    EXPECT_EQ(stored().openaiKey, "k");
    settings.providers().setMethod(0, QStringLiteral("API Key"));
    EXPECT_EQ(stored().anthropicMethod, "API Key");
    settings.providers().setOnlyKey(0, QStringLiteral("o"));
    EXPECT_EQ(stored().openrouterKey, "o");
    EXPECT_EQ(settings.saves(), 3);
}

TEST(ProvidersPart, SavesNothingThatIsAsItWas) {
    ProviderRows settings;
    settings.providers().setApiKey(2, QStringLiteral("k"));
    settings.providers().setApiKey(2, QStringLiteral("k"));
    settings.providers().setMethod(2, QStringLiteral("API Key"));
    settings.providers().setOnlyKey(1, QString());
    EXPECT_EQ(settings.saves(), 1);
}

TEST(ProvidersPart, KeepsKeyAndSignInWhenTheMethodChanges) {
    ProviderRows settings;
    settings.view->oauthStatuses["openai"] = true;
    settings.providers().setApiKey(2, QStringLiteral("k"));
    settings.providers().setMethod(2, QStringLiteral("Login (OAuth)"));
    EXPECT_EQ(settings.view->openaiKey, "k");
    EXPECT_EQ(settings.shown("asksForKey")[2], "false");
    EXPECT_EQ(settings.shown("isAuthorized")[2], "true");
    settings.providers().setMethod(2, QStringLiteral("API Key"));
    EXPECT_EQ(settings.shown("apiKey")[2], "k");
    settings.providers().setMethod(2, QStringLiteral("Password"));
    EXPECT_EQ(settings.shown("method")[2], "API Key");
}

TEST(ProvidersPart, LooksForSignInsOnlyWhenAsked) {
    ProviderRows settings;
    settings.home.write(settings.home.at(".claude.json"), ""); // an empty file counts
    settings.view->changed();
    EXPECT_EQ(settings.shown("isAuthorized")[0], "false");
    settings.providers().refresh();
    EXPECT_EQ(settings.shown("isAuthorized")[0], "true");
}

TEST(ProvidersPart, OpensATerminalForEachVerification) {
    ProviderRows settings;
    settings.providers().verify(4);
    settings.providers().verify(4);
    ASSERT_THAT(settings.platform.children, SizeIs(2));
    for (const auto& child : settings.platform.children) {
        EXPECT_EQ(child.request.arguments.back(), "deepseek");
        EXPECT_FALSE(child.waited);
    }
    EXPECT_EQ(settings.shown("isAuthorized")[4], "false");
}

TEST(ProvidersPart, PassesOverRowsThatAreNone) {
    ProviderRows settings;
    settings.providers().verify(5);
    settings.providers().setApiKey(-1, QStringLiteral("k"));
    settings.providers().setOnlyKey(2, QStringLiteral("k"));
    EXPECT_THAT(settings.platform.children, IsEmpty());
    EXPECT_THAT(settings.shown("apiKey"), ElementsAre("", "", "", "", ""));
    EXPECT_THAT(settings.shownKeys("apiKey"), ElementsAre("", ""));
}

TEST(ProvidersPart, NamesOnlyTheRowThatChanged) {
    ProviderRows settings;
    QSignalSpy changes(settings.providers().authRows(), &QAbstractItemModel::dataChanged);
    settings.providers().setApiKey(3, QStringLiteral("k"));
    ASSERT_THAT(changes, SizeIs(1));
    EXPECT_EQ(changes.front().front().toModelIndex().row(), 3);
}

} // namespace
} // namespace varnhold::testing
