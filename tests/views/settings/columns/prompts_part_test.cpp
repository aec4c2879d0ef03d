#include <QSignalSpy>
#include <optional>

#include "modelled_settings.h"
#include "settings/bot_editing.h"

namespace varnhold::testing {
namespace {

using ::testing::SizeIs;

struct PromptRows : ModelledSettings {
    PromptRows() {
        view->userBots = {bot("ops"), bot("dev")};
        view->userBots[0].prompt = "Watch.";
        view->selectedBot.reset();
        modelled();
    }

    [[nodiscard]] PromptsPart& prompts() const { return *model->prompts(); }
};

TEST(PromptsPart, SavesTheMasterPromptAtEachChange) {
    PromptRows settings;
    QSignalSpy changes(&settings.prompts(), &PromptsPart::masterPromptChanged);
    settings.prompts().setMasterPrompt(QStringLiteral("Be kind 🙂"));
    EXPECT_EQ(settings.read(settings.constants.promptFile), "Be kind 🙂");
    EXPECT_EQ(settings.prompts().masterPrompt(), QStringLiteral("Be kind 🙂"));
    EXPECT_EQ(settings.saves(), 1);
    settings.prompts().setMasterPrompt(QStringLiteral("Be kind 🙂"));
    EXPECT_EQ(settings.saves(), 1);
    EXPECT_THAT(changes, SizeIs(1));
}

TEST(PromptsPart, NamesTheBotBeforeItGivesItsPrompt) {
    PromptRows settings;
    QString subject;
    QObject::connect(&settings.prompts(), &PromptsPart::botPromptChanged,
                     [&] { subject = settings.prompts().botSubject(); });
    EXPECT_EQ(settings.prompts().botSubject(), QString());
    settings.model->bots()->select(0);
    EXPECT_EQ(subject, QStringLiteral("— 🤖 ops"));
    EXPECT_EQ(settings.prompts().botPrompt(), QStringLiteral("Watch."));
}

TEST(PromptsPart, StoresEachEditWithTheSelectedBot) {
    PromptRows settings;
    settings.model->bots()->select(0);
    settings.prompts().setBotPrompt(QStringLiteral("Watch & wait <b>"));
    EXPECT_EQ(settings.botsOnDisk()[0].prompt, "Watch & wait <b>");
    EXPECT_EQ(settings.botsOnDisk()[1].prompt, std::nullopt);
}

TEST(PromptsPart, LeavesTheBotsAloneWhileNoneIsSelected) {
    PromptRows settings;
    settings.prompts().setBotPrompt(QStringLiteral("Lost"));
    EXPECT_EQ(settings.prompts().botPrompt(), QStringLiteral("Lost"));
    EXPECT_EQ(settings.saves(), 0);
    settings.model->bots()->select(1);
    EXPECT_EQ(settings.prompts().botPrompt(), QString());
    EXPECT_EQ(settings.botsOnDisk()[1].prompt, "");
}

TEST(PromptsPart, GivesABotWithoutAPromptAnEmptyOneAfterAnothersText) {
    PromptRows settings;
    settings.model->bots()->select(0);
    settings.model->bots()->select(1);
    EXPECT_EQ(settings.botsOnDisk()[0].prompt, "Watch.");
    EXPECT_EQ(settings.botsOnDisk()[1].prompt, "");
}

} // namespace
} // namespace varnhold::testing
