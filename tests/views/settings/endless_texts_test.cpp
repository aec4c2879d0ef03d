#include <string>

#include "modelled_settings.h"

namespace varnhold::testing {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::EndsWith;
using ::testing::SizeIs;

const std::string endless(5'000'000, 'n');

// Of what is only shown; "…" takes three bytes.
auto isItsBeginning() {
    return AllOf(SizeIs(1003), EndsWith("n…"));
}

AIModelItem named(AIModelItem model) {
    model.name = endless;
    return model;
}

struct EndlessTexts : ModelledSettings {
    EndlessTexts() {
        BotConfig ops = bot("ops");
        ops.title = ops.role = ops.icon = endless;
        view->userBots = {ops};
        view->workerModels = {named(testing::model("a"))};
        view->customGroups = {CustomBotGroup{.name = endless,
                                             .models = {named(testing::model("b"))},
                                             .attachedPaths = {"/home/" + endless},
                                             .assignedBotLabels = {ops.launchdLabel}}};
        modelled();
    }
};

TEST(EndlessTexts, OfBotsAreShownByTheirBeginning) {
    const EndlessTexts settings;
    for (const char* name : {"title", "role", "icon"}) {
        EXPECT_THAT(column(*settings.model->bots()->rows(), name), Each(isItsBeginning())) << name;
        EXPECT_THAT(column(*settings.group(0).bots(), name), Each(isItsBeginning())) << name;
    }
}

TEST(EndlessTexts, OfModelsAndGroupsAreShownByTheirBeginning) {
    const EndlessTexts settings;
    EXPECT_THAT(column(*settings.chain(TargetList::worker).models(), "name"),
                Each(isItsBeginning()));
    EXPECT_THAT(column(*settings.group(0).models(), "name"), Each(isItsBeginning()));
    EXPECT_THAT(column(*settings.group(0).attachments(), "name"), Each(isItsBeginning()));
    EXPECT_THAT(settings.group(0).name().toStdString(), isItsBeginning());
}

TEST(EndlessTexts, OfAlertsAreShownByTheirBeginning) {
    EndlessTexts settings;
    settings.view->alertMsg = endless;
    settings.view->changed();
    EXPECT_THAT(settings.model->sheets()->alertText().toStdString(), isItsBeginning());
}

// What is shown may be written back only where it is whole.
TEST(EndlessTexts, ThatAreEditedStayWhole) {
    EndlessTexts settings;
    settings.view->masterPrompt = endless;
    settings.view->changed();
    EXPECT_EQ(settings.model->prompts()->masterPrompt().size(), 5'000'000);
    ASSERT_EQ(settings.model->sheets()->manageGroups()->groups()->count(), 1);
    EXPECT_EQ(settings.model->sheets()
                  ->manageGroups()
                  ->groups()
                  ->value(0, QStringLiteral("name"))
                  .toString()
                  .size(),
              5'000'000);
}

} // namespace
} // namespace varnhold::testing
