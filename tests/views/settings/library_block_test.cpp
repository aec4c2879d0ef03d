#include <gmock/gmock.h>

#include "shown_columns.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

QString operator""_q(const char* text, std::size_t length) {
    return QString::fromUtf8(text, static_cast<qsizetype>(length));
}

const QString whisper = QStringLiteral("Whisper (transcription, free/local)");
const QString say = QStringLiteral("say (voice reply, free/local)");

struct Library : ShownColumns {
    explicit Library(const std::vector<AIModelItem>& models) {
        home.write(constants.modelLibraryFile, encodeLibrary({models}));
        view->refresh();
    }

    [[nodiscard]] QQuickItem* row(const QString& name) const {
        return named(name, QAccessible::ListItem);
    }
    [[nodiscard]] QQuickItem* list() const { return named("Library"_q, QAccessible::List); }
};

TEST(LibraryBlock, ShowsTheLocalToolsAloneAndNoDividerWhereTheLibraryIsEmpty) {
    Library library({});
    library.show();
    EXPECT_NE(library.row(whisper), nullptr);
    EXPECT_NE(library.row(say), nullptr);
    EXPECT_EQ(countOf(library.list(), QAccessible::ListItem), 2);
    EXPECT_EQ(countOf(library.list(), QAccessible::Heading), 1);
    EXPECT_FALSE(
        library.named("Local Tools"_q)->parentItem()->parentItem()->property("divided").toBool());
}

TEST(LibraryBlock, HeadsEachSectionAndNotesWhatIsSpecial) {
    Library library({model("a")});
    library.view->cerebrasModels = {model("b")};
    library.view->openRouterModels = {model("c")};
    library.show();
    for (const QString& title : {"Local Tools"_q, "Direct"_q, "OpenRouter"_q}) {
        EXPECT_NE(library.named(title, QAccessible::Heading), nullptr) << qPrintable(title);
    }
    EXPECT_EQ(library.named("Ollama"_q, QAccessible::Heading), nullptr);
    EXPECT_NE(library.named("(wafer-scale)"_q), nullptr);
    EXPECT_NE(library.named("(no tool calls)"_q), nullptr);
    EXPECT_TRUE(library.named("Direct"_q, QAccessible::Heading)
                    ->parentItem()
                    ->parentItem()
                    ->property("divided")
                    .toBool());
}

TEST(LibraryBlock, TagsModelsByTheirFamilyUnlessTheyAreReachedDirectly) {
    AIModelItem direct = model("~a");
    direct.name = "A & <b>c</b> 🙂";
    Library library({direct, model("b")});
    library.show();
    EXPECT_EQ(spoken(library.row("A & <b>c</b> 🙂"_q), QAccessible::Description), "Direct"_q);
    EXPECT_EQ(spoken(library.row("Model b"_q), QAccessible::Description), "Family"_q);
    EXPECT_EQ(spoken(library.row(say), QAccessible::Description), "Local"_q);
}

TEST(LibraryBlock, AsksForTheSheetOfANewModel) {
    Library library({});
    library.show();
    library.click("Add a model to the library"_q);
    EXPECT_TRUE(library.view->showAddModelSheet);
}

TEST(LibraryBlock, TakesAModelOutOfTheFile) {
    Library library({model("a"), model("b")});
    library.show();
    library.click(ShownSettings::named(library.row("Model a"_q), "Remove from library"_q));
    EXPECT_THAT(readLibrary(library.constants.modelLibraryFile)->models, ElementsAre(model("b")));
    library.settle();
    EXPECT_EQ(library.row("Model a"_q), nullptr);
    EXPECT_NE(library.row("Model b"_q), nullptr);
}

TEST(LibraryBlock, FadesTheRowThatAPointerBeginsToDrag) {
    Library library({model("a")});
    library.show();
    library.beginDrag(library.row("Model a"_q));
    ASSERT_TRUE(library.view->draggingItem);
    EXPECT_EQ(*library.view->draggingItem, model("a"));
    EXPECT_TRUE(library.row("Model a"_q)->property("isDragging").toBool());
    QTest::mouseRelease(library.page, Qt::LeftButton);
}

TEST(LibraryBlock, CarriesTheModelByKeysToWhereItIsTaken) {
    Library library({model("a")});
    library.show();
    library.row("Model a"_q)->forceActiveFocus(Qt::TabFocusReason);
    library.press(Qt::Key_Space);
    EXPECT_EQ(library.view->draggingItem, model("a"));
    library.press(Qt::Key_Tab);
    library.press(Qt::Key_Space);
    library.settle();
    ASSERT_THAT(library.view->governorModels, SizeIs(1));
    EXPECT_EQ(library.view->governorModels.front().id, "a");
}

TEST(LibraryBlock, TakesARowOutOfItsChainByKeys) {
    Library library({});
    AIModelItem item = model("m");
    item.uniqueId = "in-chain";
    library.view->photoModels = {item, model("n")};
    library.show();
    library.row("Model m"_q)->forceActiveFocus(Qt::TabFocusReason);
    library.press(Qt::Key_Space);
    for (int stops = 0; stops < 50 && !library.view->isLibraryTargeted; ++stops) {
        library.press(Qt::Key_Up);
    }
    ASSERT_TRUE(library.view->isLibraryTargeted);
    library.press(Qt::Key_Space);
    library.settle();
    EXPECT_THAT(library.view->photoModels, ElementsAre(model("n")));
    EXPECT_EQ(library.read(library.constants.photoPrefsFile), encodeChain({model("n")}));
    EXPECT_FALSE(library.view->isLibraryTargeted);
}

TEST(LibraryBlock, TakesTextOfOtherProgramsForTheNameOfARow) {
    Library library({});
    library.view->voiceModels = {model("x"), model("y")};
    library.show();
    bool hovered = false;
    library.whileHovering = [&] { hovered = library.view->isLibraryTargeted; };
    library.dropText("x\n"_q, library.list());
    library.settle();
    EXPECT_TRUE(hovered);
    EXPECT_FALSE(library.view->isLibraryTargeted);
    EXPECT_THAT(library.view->voiceModels, ElementsAre(model("y")));
}

TEST(LibraryBlock, ScrollsToTheLastOfManyByKeysAndKeepsOnlyRowsInSight) {
    std::vector<AIModelItem> models;
    for (int i = 100; i < 600; ++i) {
        models.push_back(model(std::to_string(i)));
    }
    Library library(models);
    library.show();
    EXPECT_LT(countOf(library.list(), QAccessible::ListItem), 40);
    library.row(whisper)->forceActiveFocus(Qt::TabFocusReason);
    library.press(Qt::Key_End);
    library.settle();
    ASSERT_EQ(library.focused(), library.row("Model 599"_q));
    EXPECT_LE(library.focused()->mapToItem(library.list(), QPointF(0, 34)).y(),
              library.list()->height());
    library.press(Qt::Key_Home);
    EXPECT_EQ(library.focused(), library.row(whisper));
}

TEST(LibraryBlock, ShowsWhatIsDownloaded) {
    Library library({model("a")});
    library.show();
    library.view->downloadingModels = {"a"};
    library.view->changed();
    EXPECT_TRUE(library.row("Model a"_q)->property("isDownloading").toBool());
    EXPECT_FALSE(library.row(say)->property("isDownloading").toBool());
}

} // namespace
} // namespace varnhold::testing
