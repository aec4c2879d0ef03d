#include <chrono>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "model_blocks.h"
#include "shown_columns.h"
#include "views/waiting.h"

namespace varnhold::testing {
namespace {

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

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
    [[nodiscard]] QQuickItem* list() const { return named(u"Library"_s, QAccessible::List); }
};

TEST(LibraryBlock, ShowsTheLocalToolsAloneAndNoDividerWhereTheLibraryIsEmpty) {
    Library library({});
    library.show();
    EXPECT_NE(library.row(whisper), nullptr);
    EXPECT_NE(library.row(say), nullptr);
    EXPECT_EQ(countOf(library.list(), QAccessible::ListItem), 2);
    EXPECT_EQ(countOf(library.list(), QAccessible::Heading), 1);
    EXPECT_FALSE(
        library.named(u"Local Tools"_s)->parentItem()->parentItem()->property("divided").toBool());
}

TEST(LibraryBlock, HeadsEachSectionAndNotesWhatIsSpecial) {
    Library library({model("a")});
    library.view->cerebrasModels = {model("b")};
    library.view->openRouterModels = {model("c")};
    library.show();
    for (const QString& title : {u"Local Tools"_s, u"Direct"_s, u"OpenRouter"_s}) {
        EXPECT_NE(library.named(title, QAccessible::Heading), nullptr) << qPrintable(title);
    }
    EXPECT_EQ(library.named(u"Ollama"_s, QAccessible::Heading), nullptr);
    EXPECT_NE(library.named(u"(wafer-scale)"_s), nullptr);
    EXPECT_NE(library.named(u"(no tool calls)"_s), nullptr);
    EXPECT_TRUE(library.named(u"Direct"_s, QAccessible::Heading)
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
    EXPECT_EQ(spoken(library.row(u"A & <b>c</b> 🙂"_s), QAccessible::Description), u"Direct"_s);
    EXPECT_EQ(spoken(library.row(u"Model b"_s), QAccessible::Description), u"Family"_s);
    EXPECT_EQ(spoken(library.row(say), QAccessible::Description), u"Local"_s);
}

TEST(LibraryBlock, AsksForTheSheetOfANewModel) {
    Library library({});
    library.show();
    library.click(u"Add a model to the library"_s);
    EXPECT_TRUE(library.view->showAddModelSheet);
}

TEST(LibraryBlock, TakesAModelOutOfTheFile) {
    Library library({model("a"), model("b")});
    library.show();
    library.click(announced(library.row(u"Model a"_s), u"Remove from library"_s));
    EXPECT_THAT(readLibrary(library.constants.modelLibraryFile)->models, ElementsAre(model("b")));
    library.settle();
    EXPECT_EQ(library.row(u"Model a"_s), nullptr);
    EXPECT_NE(library.row(u"Model b"_s), nullptr);
}

TEST(LibraryBlock, ShowsWhatDeletesARowWhereThePointerOrTheKeyboardIs) {
    Library library({model("a")});
    library.show();
    QQuickItem* row = library.row(u"Model a"_s);
    const QQuickItem* trash = announced(row, u"Remove from library"_s);
    ASSERT_NE(trash, nullptr);
    EXPECT_EQ(trash->opacity(), 0);
    QTest::mouseMove(library.page, middleOf(row));
    WAIT_UNTIL(trash->opacity() == 1);
    QTest::mouseMove(library.page, QPoint(700, 10));
    WAIT_UNTIL(trash->opacity() == 0);
    row->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_EQ(trash->opacity(), 1);
}

TEST(LibraryBlock, DeletesNothingWithAPressOnWhatIsNotSeen) {
    Library library({model("a")});
    library.show();
    const QPoint trash = middleOf(announced(library.row(u"Model a"_s), u"Remove from library"_s));
    const auto press = [&] { // of a finger, which doesn't hover
        QTest::mouseClick(library.page, Qt::LeftButton, {}, trash);
    };
    press();
    EXPECT_THAT(readLibrary(library.constants.modelLibraryFile)->models, SizeIs(1));
    press(); // now it is seen
    EXPECT_THAT(readLibrary(library.constants.modelLibraryFile)->models, IsEmpty());
}

TEST(LibraryBlock, FadesTheRowThatAPointerBeginsToDrag) {
    Library library({model("a")});
    library.show();
    library.beginDrag(library.row(u"Model a"_s));
    ASSERT_TRUE(library.view->draggingItem);
    EXPECT_EQ(*library.view->draggingItem, model("a"));
    EXPECT_TRUE(library.row(u"Model a"_s)->property("isDragging").toBool());
    QTest::mouseRelease(library.page, Qt::LeftButton);
}

TEST(LibraryBlock, LetsTheRowOfADragThatWasGivenUpComeBackGently) {
    Library library({model("a")});
    library.show();
    library.beginDrag(library.row(u"Model a"_s));
    QTest::mouseRelease(library.page, Qt::LeftButton);
    const QQuickItem* block = blockOf(library.row(u"Model a"_s));
    EXPECT_DOUBLE_EQ(block->opacity(), 0.1);
    EXPECT_EQ(fadeOf(block), 0);
    library.platform.advance(std::chrono::seconds(2));
    EXPECT_LT(block->opacity(), 1);
    EXPECT_EQ(fadeOf(block), 150);
    WAIT_UNTIL(block->opacity() == 1);
}

TEST(LibraryBlock, CarriesTheModelByKeysToWhereItIsTaken) {
    Library library({model("a")});
    library.show();
    library.row(u"Model a"_s)->forceActiveFocus(Qt::TabFocusReason);
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
    library.row(u"Model m"_s)->forceActiveFocus(Qt::TabFocusReason);
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
    library.dropText(u"x\n"_s, library.list());
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
    ASSERT_EQ(library.focused(), library.row(u"Model 599"_s));
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
    EXPECT_TRUE(library.row(u"Model a"_s)->property("isDownloading").toBool());
    EXPECT_FALSE(library.row(say)->property("isDownloading").toBool());
}

} // namespace
} // namespace varnhold::testing
