#include <filesystem>
#include <gmock/gmock.h>

#include "shown_columns.h"

namespace varnhold::testing {
namespace {

using ::testing::SizeIs;

QString operator""_q(const char* text, std::size_t length) {
    return QString::fromUtf8(text, static_cast<qsizetype>(length));
}

struct Providers : ShownColumns {
    [[nodiscard]] QQuickItem* row(const QString& name) const {
        return named(name, QAccessible::ListItem);
    }
    [[nodiscard]] QQuickItem* inRow(const QString& name, const QString& control) const {
        return ShownSettings::named(row(name), control);
    }
    [[nodiscard]] QString state(const QString& name) const {
        return spoken(row(name), QAccessible::Description);
    }
};

TEST(ProvidersBlock, ListsTheProvidersInTheirOrder) {
    Providers providers;
    providers.show();
    qreal above = 0;
    for (const QString& name : {"Anthropic"_q, "Google"_q, "OpenAI"_q, "Qwen"_q, "DeepSeek"_q,
                                "OpenRouter"_q, "Cerebras"_q}) {
        ASSERT_NE(providers.row(name), nullptr) << qPrintable(name);
        const qreal y = providers.row(name)->mapToScene({}).y();
        EXPECT_GT(y, above);
        above = y;
        EXPECT_EQ(providers.state(name), "Not signed in"_q);
    }
    EXPECT_LE(above + providers.row("Cerebras"_q)->height(), 420);
    EXPECT_NE(providers.inRow("OpenRouter"_q, "(no tools)"_q), nullptr);
    EXPECT_NE(providers.inRow("Cerebras"_q, "(governor)"_q), nullptr);
}

TEST(ProvidersBlock, OpensATerminalForEachPressOfVerify) {
    Providers providers;
    providers.view->deepseekMethod = AuthMethod::oauth;
    providers.show();
    providers.platform.children.clear();
    providers.click(providers.inRow("DeepSeek"_q, "Verify"_q));
    providers.click(providers.inRow("DeepSeek"_q, "Verify"_q));
    ASSERT_THAT(providers.platform.children, SizeIs(2));
    for (const auto& child : providers.platform.children) {
        EXPECT_EQ(child.request.arguments.back(), "deepseek");
    }
    EXPECT_EQ(providers.state("DeepSeek"_q), "Not signed in"_q);
}

TEST(ProvidersBlock, ShowsTheFieldOrTheButtonThatTheMethodNeeds) {
    Providers providers;
    providers.show();
    EXPECT_NE(providers.inRow("Anthropic"_q, "Verify"_q), nullptr);
    EXPECT_EQ(providers.inRow("Anthropic"_q, "API key of Anthropic"_q), nullptr);
    providers.click(providers.inRow("Anthropic"_q, "API Key"_q));
    EXPECT_EQ(providers.view->anthropicMethod, AuthMethod::apiKey);
    EXPECT_EQ(providers.inRow("Anthropic"_q, "Verify"_q), nullptr);
    EXPECT_NE(providers.inRow("Anthropic"_q, "API key of Anthropic"_q), nullptr);
    providers.click(providers.inRow("Anthropic"_q, "Login (OAuth)"_q));
    EXPECT_EQ(providers.view->anthropicMethod, AuthMethod::oauth);
}

TEST(ProvidersBlock, KeepsAKeyThatIsTypedUntilTheNextSave) {
    Providers providers;
    providers.show();
    providers.click("API key of OpenAI"_q);
    providers.type("sk-1"_q);
    EXPECT_EQ(providers.view->openaiKey, "sk-1");
    EXPECT_EQ(providers.state("OpenAI"_q), "Signed in"_q);
    EXPECT_EQ(providers.named("API key of OpenAI"_q)->property("displayText"),
              QVariant("sk-1"_q)); // as typed, not hidden
    EXPECT_EQ(providers.saves(), 0);
    providers.view->save();
    EXPECT_EQ(readAuthConfig(providers.constants.authConfigFile)->openaiKey, "sk-1");
}

TEST(ProvidersBlock, TakesTheKeysOfThoseThatKnowNothingElse) {
    Providers providers;
    providers.show();
    providers.click("API key of OpenRouter"_q);
    providers.type("or"_q);
    providers.click("API key of Cerebras"_q);
    providers.type("ce"_q);
    EXPECT_EQ(providers.view->openrouterKey, "or");
    EXPECT_EQ(providers.view->cerebrasKey, "ce");
    EXPECT_EQ(providers.state("Cerebras"_q), "Signed in"_q);
    providers.press(Qt::Key_Backspace);
    providers.press(Qt::Key_Backspace);
    EXPECT_EQ(providers.state("Cerebras"_q), "Not signed in"_q);
}

TEST(ProvidersBlock, KeepsTheCursorWhereTheUserTypes) {
    Providers providers;
    providers.view->qwenKey = "ac";
    providers.show();
    providers.click("API key of Qwen"_q);
    providers.press(Qt::Key_Home);
    providers.press(Qt::Key_Right);
    providers.type("b"_q);
    providers.type("b"_q);
    EXPECT_EQ(providers.view->qwenKey, "abbc");
}

TEST(ProvidersBlock, LooksForSignInsWhenRefreshed) {
    Providers providers;
    providers.show();
    providers.home.write(providers.home.at(".gemini/oauth_creds.json"), "");
    EXPECT_EQ(providers.state("Google"_q), "Not signed in"_q);
    providers.click("Refresh"_q);
    EXPECT_EQ(providers.state("Google"_q), "Signed in"_q);
    std::filesystem::remove(providers.home.at(".gemini/oauth_creds.json"));
    EXPECT_EQ(providers.state("Google"_q), "Signed in"_q); // until the next time
}

TEST(ProvidersBlock, ChoosesTheMethodByArrowKeys) {
    Providers providers;
    providers.show();
    providers.inRow("Google"_q, "Login (OAuth)"_q)->forceActiveFocus(Qt::TabFocusReason);
    providers.press(Qt::Key_Right);
    EXPECT_EQ(providers.view->googleMethod, AuthMethod::apiKey);
    providers.press(Qt::Key_Left);
    EXPECT_EQ(providers.view->googleMethod, AuthMethod::oauth);
}

TEST(ProvidersBlock, CutsNoWordOfTheMethods) {
    Providers providers;
    providers.show();
    for (const QString& word : {"Login (OAuth)"_q, "API Key"_q}) {
        QQuickItem* segment = providers.inRow("DeepSeek"_q, word);
        ASSERT_NE(segment, nullptr);
        EXPECT_FALSE(
            segment->property("contentItem").value<QQuickItem*>()->property("truncated").toBool());
    }
}

} // namespace
} // namespace varnhold::testing
