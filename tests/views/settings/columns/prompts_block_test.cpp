#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

#include "shown_columns.h"

namespace varnhold::testing {
namespace {

using namespace Qt::StringLiterals;
using ::testing::SizeIs;

const std::vector<QString> hints{
    QStringLiteral("Your Telegram AI agents — each bot is a separate assistant"),
    QStringLiteral("All available AI models from your connected providers — drag them into chains"),
    QStringLiteral("Connect your AI accounts — sign in or paste an API key to unlock each "
                   "provider's models"),
    QStringLiteral("Injected into every bot's system prompt — use it to define your identity, "
                   "values, and global rules"),
    QStringLiteral("· Additional instructions specific to the selected bot's role")};

struct Prompts : ShownColumns {
    Prompts() {
        view->userBots.push_back(bot("ops"));
        view->userBots.push_back(bot("dev"));
        view->userBots[1].prompt = "Watch.";
        view->save();
    }

    [[nodiscard]] QQuickItem* editor(const QString& name) const {
        return named(name, QAccessible::EditableText);
    }
    [[nodiscard]] QString text(const QString& name) const {
        return editor(name)->property("text").toString();
    }
    void typeAtTheEnd(const QString& name, const QString& words) {
        editor(name)->forceActiveFocus(Qt::MouseFocusReason);
        press(Qt::Key_End, Qt::ControlModifier);
        type(words);
    }
};

TEST(PromptsBlock, SavesTheMasterPromptAtEachKey) {
    Prompts prompts;
    prompts.view->masterPrompt = "Be ";
    prompts.show();
    const long before = prompts.saves();
    prompts.typeAtTheEnd(u"Master Prompt Injection"_s, u"ok"_s);
    EXPECT_EQ(prompts.read(prompts.constants.promptFile), "Be ok");
    EXPECT_EQ(prompts.saves() - before, 2);
}

TEST(PromptsBlock, ShowsThePromptOfTheBotThatIsSelected) {
    Prompts prompts;
    prompts.show();
    prompts.clickRow(u"🤖 ops"_s);
    EXPECT_EQ(prompts.text(u"Bot Prompt"_s), u"Watch."_s);
    EXPECT_NE(prompts.named(u"— 🤖 ops"_s), nullptr);
}

TEST(PromptsBlock, StoresEachKeyWithTheSelectedBotAlone) {
    Prompts prompts;
    prompts.show();
    prompts.clickRow(u"🤖 ops"_s);
    prompts.typeAtTheEnd(u"Bot Prompt"_s, u" & <b>"_s);
    EXPECT_EQ(prompts.botsOnDisk()[1].prompt, "Watch. & <b>");
    EXPECT_EQ(prompts.botsOnDisk()[2].prompt, std::nullopt);
    prompts.clickRow(u"🤖 dev"_s);
    EXPECT_EQ(prompts.text(u"Bot Prompt"_s), QString());
    EXPECT_EQ(prompts.botsOnDisk()[1].prompt, "Watch. & <b>");
    EXPECT_EQ(prompts.botsOnDisk()[2].prompt, "");
}

TEST(PromptsBlock, StoresWhatWasNotTypedAsItWas) {
    const std::string odd = "a\u00a0b\u2028c\r\nd\re\n";
    Prompts prompts;
    prompts.view->masterPrompt = odd;
    prompts.view->userBots[1].prompt = odd;
    prompts.show();
    prompts.typeAtTheEnd(u"Master Prompt Injection"_s, u"f"_s);
    EXPECT_EQ(prompts.read(prompts.constants.promptFile), odd + "f");
    prompts.clickRow(u"🤖 ops"_s);
    EXPECT_EQ(prompts.botsOnDisk()[1].prompt, odd);
    prompts.typeAtTheEnd(u"Bot Prompt"_s, u"f"_s);
    EXPECT_EQ(prompts.botsOnDisk()[1].prompt, odd + "f");
}

TEST(PromptsBlock, KeepsTheCursorWhereTheUserTypes) {
    Prompts prompts;
    prompts.view->masterPrompt = "ac";
    prompts.show();
    prompts.editor(u"Master Prompt Injection"_s)->forceActiveFocus(Qt::MouseFocusReason);
    prompts.press(Qt::Key_Home, Qt::ControlModifier);
    prompts.press(Qt::Key_Right);
    prompts.type(u"b"_s);
    prompts.type(u"b"_s);
    EXPECT_EQ(prompts.read(prompts.constants.promptFile), "abbc");
}

TEST(PromptsBlock, SavesNothingByShowingATextAgain) {
    Prompts prompts;
    prompts.show();
    const long before = prompts.saves();
    prompts.view->masterPrompt = "From elsewhere";
    prompts.view->changed();
    EXPECT_EQ(prompts.text(u"Master Prompt Injection"_s), u"From elsewhere"_s);
    EXPECT_EQ(prompts.saves(), before);
}

TEST(PromptsBlock, ShowsAndHidesTheHintsOfAllColumnsAndNothingElse) {
    Prompts prompts;
    prompts.show();
    const long before = prompts.saves();
    for (const QString& hint : hints) {
        EXPECT_EQ(prompts.named(hint), nullptr) << qPrintable(hint);
    }
    EXPECT_EQ(spoken(prompts.named(u"Hints"_s), QAccessible::Description), u"Show hints"_s);
    prompts.click(u"Hints"_s);
    EXPECT_TRUE(prompts.view->showHints);
    EXPECT_EQ(spoken(prompts.named(u"Hints"_s), QAccessible::Description), u"Hide hints"_s);
    for (const QString& hint : hints) {
        EXPECT_NE(prompts.named(hint), nullptr) << qPrintable(hint);
    }
    prompts.named(u"Hints"_s)->forceActiveFocus(Qt::TabFocusReason);
    prompts.press(Qt::Key_Space);
    EXPECT_FALSE(prompts.view->showHints);
    EXPECT_EQ(prompts.named(hints.front()), nullptr);
    EXPECT_EQ(prompts.saves(), before);
}

TEST(PromptsBlock, KeepsTheHintBesideALongNameInSight) {
    Prompts prompts;
    prompts.view->userBots[1].title = std::string(300, 'x');
    prompts.view->showHints = true;
    prompts.show();
    prompts.clickRow(u"🤖 "_s + QString(300, u'x'));
    prompts.settle();
    QQuickItem* hint = prompts.named(hints.back());
    ASSERT_NE(hint, nullptr);
    EXPECT_GT(hint->width(), 100);
    EXPECT_LE(hint->mapToScene(QPointF(hint->width(), 0)).x(), prompts.page->width());
}

} // namespace
} // namespace varnhold::testing
