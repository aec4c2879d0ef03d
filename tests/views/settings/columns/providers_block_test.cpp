#include <filesystem>
#include <gmock/gmock.h>

#include "shown_columns.h"

namespace varnhold::testing {
namespace {

using namespace Qt::StringLiterals;
using ::testing::SizeIs;

struct Providers : ShownColumns {
    [[nodiscard]] QQuickItem* row(const QString& name) const {
        return named(name, QAccessible::ListItem);
    }
    [[nodiscard]] QQuickItem* inRow(const QString& name, const QString& control) const {
        return announced(row(name), control);
    }
    [[nodiscard]] QString state(const QString& name) const {
        return spoken(row(name), QAccessible::Description);
    }
};

TEST(ProvidersBlock, ListsTheProvidersInTheirOrder) {
    Providers providers;
    providers.show();
    qreal above = 0;
    for (const QString& name : {u"Anthropic"_s, u"Google"_s, u"OpenAI"_s, u"Qwen"_s, u"DeepSeek"_s,
                                u"OpenRouter"_s, u"Cerebras"_s}) {
        ASSERT_NE(providers.row(name), nullptr) << qPrintable(name);
        const qreal y = providers.row(name)->mapToScene({}).y();
        EXPECT_GT(y, above);
        above = y;
        EXPECT_EQ(providers.state(name), u"Not signed in"_s);
    }
    EXPECT_LE(above + providers.row(u"Cerebras"_s)->height(), 420);
    EXPECT_NE(providers.inRow(u"OpenRouter"_s, u"(no tools)"_s), nullptr);
    EXPECT_NE(providers.inRow(u"Cerebras"_s, u"(governor)"_s), nullptr);
}

TEST(ProvidersBlock, OpensATerminalForEachPressOfVerify) {
    Providers providers;
    providers.view->deepseekMethod = AuthMethod::oauth;
    providers.show();
    providers.platform.children.clear();
    providers.click(providers.inRow(u"DeepSeek"_s, u"Verify"_s));
    providers.click(providers.inRow(u"DeepSeek"_s, u"Verify"_s));
    ASSERT_THAT(providers.platform.children, SizeIs(2));
    for (const auto& child : providers.platform.children) {
        EXPECT_EQ(child.request.arguments.back(), "deepseek");
    }
    EXPECT_EQ(providers.state(u"DeepSeek"_s), u"Not signed in"_s);
}

TEST(ProvidersBlock, ShowsTheFieldOrTheButtonThatTheMethodNeeds) {
    Providers providers;
    providers.show();
    EXPECT_NE(providers.inRow(u"Anthropic"_s, u"Verify"_s), nullptr);
    EXPECT_EQ(providers.inRow(u"Anthropic"_s, u"API key of Anthropic"_s), nullptr);
    providers.click(providers.inRow(u"Anthropic"_s, u"API Key"_s));
    EXPECT_EQ(providers.view->anthropicMethod, AuthMethod::apiKey);
    EXPECT_EQ(providers.inRow(u"Anthropic"_s, u"Verify"_s), nullptr);
    EXPECT_NE(providers.inRow(u"Anthropic"_s, u"API key of Anthropic"_s), nullptr);
    providers.click(providers.inRow(u"Anthropic"_s, u"Login (OAuth)"_s));
    EXPECT_EQ(providers.view->anthropicMethod, AuthMethod::oauth);
}

TEST(ProvidersBlock, SavesAKeyAsItIsTyped) {
    Providers providers;
    providers.show();
    providers.click(u"API key of OpenAI"_s);
    providers.type(u"sk-1"_s);
    EXPECT_EQ(readAuthConfig(providers.constants.authConfigFile)->openaiKey, "sk-1");
    EXPECT_EQ(providers.state(u"OpenAI"_s), u"Signed in"_s);
    EXPECT_EQ(providers.named(u"API key of OpenAI"_s)->property("displayText"),
              QVariant(u"sk-1"_s)); // as typed, not hidden
}

TEST(ProvidersBlock, SavesAMethodAsItIsChosen) {
    Providers providers;
    providers.show();
    providers.click(providers.inRow(u"Anthropic"_s, u"API Key"_s));
    EXPECT_EQ(readAuthConfig(providers.constants.authConfigFile)->anthropicMethod, "API Key");
}

TEST(ProvidersBlock, TakesTheKeysOfThoseThatKnowNothingElse) {
    Providers providers;
    providers.show();
    providers.click(u"API key of OpenRouter"_s);
    providers.type(u"or"_s);
    providers.click(u"API key of Cerebras"_s);
    providers.type(u"ce"_s);
    EXPECT_EQ(providers.view->openrouterKey, "or");
    EXPECT_EQ(providers.view->cerebrasKey, "ce");
    EXPECT_EQ(providers.state(u"Cerebras"_s), u"Signed in"_s);
    providers.press(Qt::Key_Backspace);
    providers.press(Qt::Key_Backspace);
    EXPECT_EQ(providers.state(u"Cerebras"_s), u"Not signed in"_s);
}

TEST(ProvidersBlock, KeepsTheCursorWhereTheUserTypes) {
    Providers providers;
    providers.view->qwenKey = "ac";
    providers.show();
    providers.click(u"API key of Qwen"_s);
    providers.press(Qt::Key_Home);
    providers.press(Qt::Key_Right);
    providers.type(u"b"_s);
    providers.type(u"b"_s);
    EXPECT_EQ(providers.view->qwenKey, "abbc");
}

TEST(ProvidersBlock, LooksForSignInsWhenRefreshed) {
    Providers providers;
    providers.show();
    providers.home.write(providers.home.at(".gemini/oauth_creds.json"), "");
    EXPECT_EQ(providers.state(u"Google"_s), u"Not signed in"_s);
    providers.click(u"Refresh"_s);
    EXPECT_EQ(providers.state(u"Google"_s), u"Signed in"_s);
    std::filesystem::remove(providers.home.at(".gemini/oauth_creds.json"));
    EXPECT_EQ(providers.state(u"Google"_s), u"Signed in"_s); // until the next time
}

TEST(ProvidersBlock, ChoosesTheMethodByArrowKeys) {
    Providers providers;
    providers.show();
    providers.inRow(u"Google"_s, u"Login (OAuth)"_s)->forceActiveFocus(Qt::TabFocusReason);
    providers.press(Qt::Key_Right);
    EXPECT_EQ(providers.view->googleMethod, AuthMethod::apiKey);
    providers.press(Qt::Key_Left);
    EXPECT_EQ(providers.view->googleMethod, AuthMethod::oauth);
}

TEST(ProvidersBlock, CutsNoWordOfTheMethods) {
    Providers providers;
    providers.show();
    for (const QString& word : {u"Login (OAuth)"_s, u"API Key"_s}) {
        QQuickItem* segment = providers.inRow(u"DeepSeek"_s, word);
        ASSERT_NE(segment, nullptr);
        EXPECT_FALSE(
            segment->property("contentItem").value<QQuickItem*>()->property("truncated").toBool());
    }
}

} // namespace
} // namespace varnhold::testing
