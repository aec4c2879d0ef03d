#include <functional>
#include <string>
#include <vector>

#include "shown_sheets.h"

namespace varnhold::testing {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

struct AddModelInTheWindow : ::testing::Test, ShownSheets {
    void SetUp() override {
        show();
        open();
    }
    void open() {
        view->showAddModelSheet = true;
        view->changed();
    }
    [[nodiscard]] std::vector<AIModelItem> onDisk() const {
        return valueOrEmpty(readLibrary(constants.modelLibraryFile)).models;
    }
};

TEST_F(AddModelInTheWindow, BeginsWithTheIdAndCannotBeDoneWithoutOne) {
    EXPECT_EQ(focusedName(), "Model ID");
    EXPECT_FALSE(isEnabled("Add Model"));
    type(QStringLiteral("  "));
    EXPECT_FALSE(isEnabled("Add Model"));
    press(Qt::Key_Return);
    EXPECT_TRUE(view->showAddModelSheet);
    type(QStringLiteral("m"));
    EXPECT_TRUE(isEnabled("Add Model"));
}

TEST_F(AddModelInTheWindow, HasPlaceholdersThatShowWhatIsMeant) {
    EXPECT_EQ(valueOf("Model ID", "placeholder"), "e.g. claude-opus-4-8");
    EXPECT_EQ(valueOf("Display Name", "placeholder"), "e.g. Claude Opus 4.8");
    EXPECT_EQ(valueOf("Family / Group", "placeholder"), "e.g. Anthropic");
    EXPECT_EQ(valueOf("Provider", "current"), "claude");
    EXPECT_EQ(valueOf("Color", "current"), "purple");
}

TEST_F(AddModelInTheWindow, StoresTheIdWithoutItsBlanksAndShowsTheNameWithThem) {
    type(QStringLiteral(" m "));
    click("Add Model");
    ASSERT_THAT(onDisk(), SizeIs(1));
    EXPECT_EQ(onDisk()[0].id, "m");
    EXPECT_EQ(onDisk()[0].name, " m ");
    EXPECT_EQ(onDisk()[0].family, "claude");
    EXPECT_FALSE(view->showAddModelSheet);
    EXPECT_FALSE(shows("Add Model to Library"));
}

TEST_F(AddModelInTheWindow, TakesEveryFieldFromTheKeyboardAlone) {
    type(QStringLiteral("gpt"));
    press(Qt::Key_Tab);
    type(QStringLiteral("GPT"));
    press(Qt::Key_Tab);
    type(QStringLiteral("Open"));
    press(Qt::Key_Tab);
    press(Qt::Key_Down);
    press(Qt::Key_Tab);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    ASSERT_THAT(onDisk(), SizeIs(1));
    const AIModelItem expected{.uniqueId = onDisk()[0].uniqueId,
                               .id = "gpt",
                               .name = "GPT",
                               .family = "Open",
                               .color = "green",
                               .type = "api",
                               .provider_key = "openai"};
    EXPECT_EQ(onDisk()[0], expected);
    EXPECT_TRUE(onDisk()[0].uniqueId);
}

TEST_F(AddModelInTheWindow, OffersItsProvidersInAMenu) {
    focus("Provider");
    press(Qt::Key_Space);
    const auto* menu = control("Provider")->property("popup").value<QObject*>();
    ASSERT_NE(menu, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([menu] { return menu->property("opened").toBool(); }));
    EXPECT_NE(announced(page->quickWindow()->contentItem(), QStringLiteral("ollama")), nullptr);
    press(Qt::Key_Down);
    press(Qt::Key_Return); // the menu has it first
    EXPECT_EQ(valueOf("Provider", "current"), "openai");
    click("Model ID");
    type(QStringLiteral("m"));
    press(Qt::Key_Return);
    ASSERT_THAT(onDisk(), SizeIs(1));
    EXPECT_EQ(onDisk()[0].family, "openai");
    EXPECT_EQ(onDisk()[0].provider_key, "openai");
}

TEST_F(AddModelInTheWindow, WithAnIdThatIsThereChangesNothingAndGivesNoSign) {
    const std::string before = encodeLibrary({{varnhold::testing::model("m")}}) + "\n";
    write(constants.modelLibraryFile, before);
    type(QStringLiteral("m"));
    press(Qt::Key_Return);
    EXPECT_EQ(read(constants.modelLibraryFile), before);
    EXPECT_EQ(model->sheets()->standing(), QString());
    EXPECT_FALSE(view->showAlert);
}

TEST_F(AddModelInTheWindow, OverwritesALibraryThatCannotBeDecoded) {
    write(constants.modelLibraryFile, "{");
    type(QStringLiteral("m"));
    press(Qt::Key_Return);
    EXPECT_THAT(onDisk(), SizeIs(1));
}

TEST_F(AddModelInTheWindow, IsGivenUpByThreeWaysThatAddNothing) {
    for (const auto& giveUp :
         std::vector<std::function<void()>>{[this] { click("Cancel"); }, [this] { click("Close"); },
                                            [this] { press(Qt::Key_Escape); }}) {
        open();
        click("Model ID");
        type(QStringLiteral("m"));
        giveUp();
        EXPECT_FALSE(view->showAddModelSheet);
        EXPECT_EQ(model->sheets()->standing(), QString());
    }
    EXPECT_THAT(onDisk(), IsEmpty());
}

TEST_F(AddModelInTheWindow, BeginsAnewEachTime) {
    type(QStringLiteral("m"));
    press(Qt::Key_Escape);
    open();
    EXPECT_EQ(valueOf("Model ID"), "");
}

} // namespace
} // namespace varnhold::testing
