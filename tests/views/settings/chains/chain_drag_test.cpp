#include <QDrag>
#include <QMimeData>
#include <QQmlEngine>
#include <QSignalSpy>
#include <string>
#include <vector>

#include "settings/chain_sections.h"
#include "shown_chains.h"
#include "views/settings/dragging/drag_session.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const QString codingModels = QStringLiteral("End of Coding Chain");
const QString codingTop = QStringLiteral("Top of Coding Chain");
const QString codingBots = QStringLiteral("Bots of Coding Chain");
const QString photoModels = QStringLiteral("End of Photo Chain");
const QString photoTop = QStringLiteral("Top of Photo Chain");

struct ChainDrags : ShownChains {
    ChainDrags() {
        view->workerModels = {testing::model("a", "A"), testing::model("b", "B"),
                              testing::model("c", "C")};
        view->directModels = {testing::model("x", {.provider_key = "openrouter"}),
                              testing::model("y", {.uniqueId = "Y", .provider_key = "openrouter"})};
        view->openrouterKey = "key";
        view->userBots = {bot("ops"), bot("cto")};
    }

    [[nodiscard]] std::vector<std::string> ids(TargetList list) const {
        std::vector<std::string> out;
        for (const AIModelItem& each : view->chainArray(list)) {
            out.push_back(each.id);
        }
        return out;
    }
    // As the file has them; none if nothing was saved yet.
    [[nodiscard]] std::vector<std::string> saved(TargetList list) const {
        std::vector<std::string> out;
        for (const AIModelItem& each :
             valueOrEmpty(decodeChain(read(constants.*chainSection(list).file)))) {
            out.push_back(each.id);
        }
        return out;
    }
    [[nodiscard]] QPoint row(const char* id) const {
        return middleOf(named(QStringLiteral("Model ") + QString::fromUtf8(id)));
    }
    // Under the last row of the chain.
    [[nodiscard]] QPoint freeSpace(const QString& zone) const {
        const QQuickItem* area = named(zone);
        return area->mapToScene(QPointF(area->width() / 2, area->height() - 6)).toPoint();
    }
    void dropFree(const char* text, const QString& zone) {
        dropAt(freeSpace(zone), QString::fromUtf8(text));
    }
    void dropTop(const char* text, const QString& strip) { drop(QString::fromUtf8(text), strip); }
    [[nodiscard]] bool faint(const char* id) const {
        const KeyedListModel& rows = *chain(TargetList::worker).models();
        return rows.value(rows.rowOf(QString::fromUtf8(id)), QStringLiteral("isDragging")).toBool();
    }
};

TEST(ChainDrag, PutsALibraryRowAtTheEndOfAChain) {
    ChainDrags settings;
    settings.show();
    settings.dropFree("x", codingModels);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c", "x"));
    EXPECT_THAT(settings.saved(TargetList::worker), ElementsAre("a", "b", "c", "x"));
    EXPECT_TRUE(settings.view->workerModels.back().uniqueId);
    EXPECT_NE(settings.named(QStringLiteral("Model x"), coding), nullptr);
}

TEST(ChainDrag, PutsARowAtTheHeadByTheTopStrip) {
    ChainDrags settings;
    settings.show();
    settings.dropTop("x", codingTop);
    EXPECT_THAT(settings.saved(TargetList::worker), ElementsAre("x", "a", "b", "c"));
    settings.dropTop("Y", photoTop);
    EXPECT_THAT(settings.saved(TargetList::photo), ElementsAre("y")) << "into an empty chain";
}

TEST(ChainDrag, TakesALibraryRowTwiceOnlyIfItHasAnIdentityOfItsOwn) {
    ChainDrags settings;
    settings.show();
    settings.dropFree("x", photoModels);
    settings.dropFree("x", photoModels);
    EXPECT_THAT(settings.ids(TargetList::photo), ElementsAre("x"));
    settings.dropFree("Y", photoModels);
    settings.dropFree("Y", photoModels);
    EXPECT_THAT(settings.ids(TargetList::photo), ElementsAre("x", "y", "y"));
}

TEST(ChainDrag, MovesARowFromChainToChain) {
    ChainDrags settings;
    settings.show();
    settings.dropFree("B", photoModels);
    settings.dropTop("C", photoTop);
    EXPECT_THAT(settings.saved(TargetList::worker), ElementsAre("a"));
    EXPECT_THAT(settings.saved(TargetList::photo), ElementsAre("c", "b"));
    EXPECT_NE(settings.named(QStringLiteral("Model b"), photo), nullptr);
    EXPECT_EQ(settings.named(QStringLiteral("Model b"), coding), nullptr);
}

TEST(ChainDrag, OfARowOnItsOwnChainsZonesDoesNothing) {
    ChainDrags settings;
    settings.show();
    settings.dropTop("C", codingTop);
    settings.dropFree("A", codingModels);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c"));
    EXPECT_THAT(settings.saved(TargetList::worker), IsEmpty());
}

TEST(ChainDrag, IsRefusedWithAnAlertWhereNobodyIsSignedIn) {
    ChainDrags settings;
    settings.view->directModels[0].provider_key = "claude";
    settings.view->directModels[0].family = "Claude";
    settings.show();
    settings.dropFree("x", codingModels);
    EXPECT_TRUE(settings.view->showAlert);
    EXPECT_EQ(settings.view->alertMsg, "Auth required for Claude.");
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c"));
    EXPECT_THAT(settings.saved(TargetList::worker), IsEmpty());
}

TEST(ChainDrag, OfACerebrasModelIsRefusedFromTheLibraryButMovesBetweenChains) {
    ChainDrags settings;
    settings.view->directModels[0].family = "Cerebras";
    settings.view->governorModels = {testing::model("z", "Z")};
    settings.view->governorModels[0].family = "Cerebras";
    settings.show();
    settings.dropFree("Z", codingModels);
    EXPECT_FALSE(settings.view->showAlert);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c", "z"));
    settings.dropFree("x", codingModels);
    EXPECT_TRUE(settings.view->showAlert);
    EXPECT_THAT(settings.view->alertMsg, HasSubstr("Cerebras"));
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c", "z"));
}

TEST(ChainDrag, ReleasedOnARowOfAnotherChainIsConsumedThere) {
    ChainDrags settings;
    settings.view->photoModels = {testing::model("p", "P")};
    settings.show();
    settings.dropAt(settings.row("p"), QStringLiteral("A"));
    settings.dropAt(settings.row("p"), QStringLiteral("x"));
    EXPECT_THAT(settings.ids(TargetList::photo), ElementsAre("p"));
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c"));
}

TEST(ChainDrag, OverRowsOfItsChainReordersAndSavesAtTheDrop) {
    ChainDrags settings;
    settings.show();
    settings.lift(QStringLiteral("Model a"), coding);
    EXPECT_TRUE(settings.faint("A"));
    const QPoint second = settings.row("b");
    const QPoint third = settings.row("c");
    settings.carryTo(second, QStringLiteral("A"));
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("b", "a", "c"));
    settings.carryTo(third, QStringLiteral("A"));
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("b", "c", "a"));
    EXPECT_THAT(settings.saved(TargetList::worker), IsEmpty());
    settings.dropAt(third, QStringLiteral("A"));
    EXPECT_THAT(settings.saved(TargetList::worker), ElementsAre("b", "c", "a"));
    EXPECT_FALSE(settings.faint("A"));
}

TEST(ChainDrag, ReleasedBesideTheRowsKeepsTheNewOrderForTheNextSave) {
    ChainDrags settings;
    settings.show();
    settings.lift(QStringLiteral("Model a"), coding);
    settings.carryTo(settings.row("b"), QStringLiteral("A"));
    settings.dropFree("A", codingModels);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("b", "a", "c"));
    EXPECT_THAT(settings.saved(TargetList::worker), IsEmpty());
    settings.click(QStringLiteral("More Effort"), photo);
    EXPECT_THAT(settings.saved(TargetList::worker), ElementsAre("b", "a", "c"));
}

TEST(ChainDrag, CarriesARowWithAnEmptyIdentityToo) {
    ChainDrags settings;
    settings.view->workerModels = {model("a", "A"), model("e", "")};
    settings.show();
    settings.drag(QStringLiteral("Model e"), coding, [&](const QDrag&) {
        settings.carryTo(settings.row("a"), QString());
        settings.dropAt(settings.freeSpace(photoModels), QString());
    });
    EXPECT_THAT(settings.saved(TargetList::photo), ElementsAre("e"));
}

TEST(ChainDrag, CarriesItsRowWhereModelsAreTaken) {
    ChainDrags settings;
    settings.show();
    QString carried;
    bool pictured = false;
    settings.drag(QStringLiteral("Model b"), coding, [&](const QDrag& drag) {
        carried = drag.mimeData()->text();
        pictured = !drag.pixmap().isNull();
        settings.carryTo(middleOf(settings.named(codingBots)), carried);
        EXPECT_TRUE(settings.view->chainBotDropTargeted["worker"]) << "any text is over the zone";
        settings.dropAt(settings.freeSpace(photoModels), carried);
    });
    EXPECT_EQ(carried, QStringLiteral("B"));
    EXPECT_TRUE(pictured);
    EXPECT_THAT(settings.saved(TargetList::photo), ElementsAre("b"));
    EXPECT_THAT(settings.saved(TargetList::worker), ElementsAre("a", "c"));
    EXPECT_FALSE(settings.view->draggingItem);
}

TEST(ChainDrag, ReordersHoweverLongItTakes) {
    ChainDrags settings;
    settings.show();
    settings.drag(QStringLiteral("Model a"), coding, [&](const QDrag&) {
        settings.platform.advance(3s);
        settings.carryTo(settings.row("b"), QStringLiteral("A"));
        EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("b", "a", "c"));
        settings.platform.advance(3s);
        const QPoint third = settings.row("c");
        settings.carryTo(third, QStringLiteral("A"));
        settings.platform.advance(3s);
        settings.dropAt(third, QStringLiteral("A"));
    });
    EXPECT_THAT(settings.saved(TargetList::worker), ElementsAre("b", "c", "a"));
    EXPECT_FALSE(settings.faint("A"));
}

TEST(ChainDrag, MarksWhereTheRowWouldLand) {
    ChainDrags settings;
    settings.view->photoModels = {testing::model("p", "P")};
    settings.show();
    const auto landing = [&](const QString& zone) {
        return settings.named(zone)->parentItem()->findChild<QQuickItem*>(
            QStringLiteral("landing"));
    };
    settings.drag(QStringLiteral("Model b"), coding, [&](const QDrag&) {
        settings.carryTo(settings.freeSpace(photoModels), QStringLiteral("B"));
        const QQuickItem* line = landing(photoModels);
        EXPECT_TRUE(line->isVisible());
        const QQuickItem* last = settings.named(QStringLiteral("Model p"));
        const qreal under =
            line->mapToScene({}).y() - last->mapToScene(QPointF(0, last->height())).y();
        EXPECT_GE(under, 0);
        EXPECT_LT(under, 4);
        settings.carryTo(middleOf(settings.named(photoTop)), QStringLiteral("B"));
        EXPECT_LT(line->mapToScene({}).y(), last->mapToScene({}).y());
        settings.carryTo(settings.freeSpace(codingModels), QStringLiteral("B"));
        EXPECT_FALSE(line->isVisible());
        EXPECT_FALSE(landing(codingModels)->isVisible()) << "it stands there already";
        settings.leave();
    });
}

TEST(ChainDrag, ThatEndsOutsideLeavesNoFaintRowForLong) {
    ChainDrags settings;
    settings.show();
    settings.drag(QStringLiteral("Model a"), coding, [](const QDrag&) {});
    EXPECT_TRUE(settings.faint("A"));
    settings.platform.advance(2s);
    EXPECT_FALSE(settings.faint("A"));
    settings.carryTo(settings.row("b"), QStringLiteral("A")); // some other program's text
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c"));
}

TEST(ChainDrag, ByKeysThatIsGivenUpLeavesTheRowWhereItWas) {
    ChainDrags settings;
    settings.show();
    settings.focus(QStringLiteral("Model a"), coding);
    settings.key(Qt::Key_Space);
    settings.key(Qt::Key_Down);
    settings.key(Qt::Key_Down);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("b", "c", "a"));
    settings.key(Qt::Key_Escape);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c"));
    EXPECT_THAT(settings.saved(TargetList::worker), IsEmpty());
}

TEST(ChainDrag, OnBuiltInRowsGoesToTheChainAroundThem) {
    ChainDrags settings;
    settings.show();
    settings.drop(QStringLiteral("A"), QStringLiteral("say (voice reply, free/local)"), audio);
    EXPECT_THAT(settings.saved(TargetList::voice), ElementsAre("a"));
    EXPECT_THAT(settings.saved(TargetList::worker), ElementsAre("b", "c"));
}

TEST(ChainDrag, OfABotAssignsItOnce) {
    ChainDrags settings;
    settings.show();
    settings.drop(QStringLiteral("com.ostrelleai.cto.telegramd"), codingBots);
    const std::string saved = settings.read(settings.constants.chainBotAssignmentsFile);
    EXPECT_EQ(saved, R"({"worker":["com.ostrelleai.cto.telegramd"]})");
    settings.drop(QStringLiteral("com.ostrelleai.cto.telegramd"), codingBots);
    EXPECT_THAT(settings.view->chainBotAssignments["worker"], SizeIs(1));
    settings.drop(QStringLiteral("com.ostrelleai.cto.telegramd"),
                  QStringLiteral("Bots of Photo Chain"));
    EXPECT_THAT(settings.view->chainBotAssignments["worker"], SizeIs(1)) << "in several chains";
    EXPECT_NE(settings.named(QStringLiteral("cto"), photo), nullptr);
}

TEST(ChainDrag, OfTextFromElsewhereCountsAsWhatItSays) {
    ChainDrags settings;
    settings.show();
    settings.drop(QStringLiteral("something else"), codingBots);
    settings.dropFree("something else", codingModels);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c"));
    EXPECT_THAT(settings.view->chainBotAssignments, IsEmpty());
    settings.drop(QStringLiteral("com.ostrelleai.ops.telegramd\n"), codingBots);
    EXPECT_NE(settings.named(QStringLiteral("ops"), coding), nullptr);
}

TEST(ChainDrag, MarksTheStripAndTheBotsZoneWhileItHoversThere) {
    ChainDrags settings;
    settings.show();
    settings.carryTo(middleOf(settings.named(codingTop)), QStringLiteral("x"));
    EXPECT_TRUE(settings.view->workerTopTargeted);
    EXPECT_FALSE(settings.view->photoTopTargeted);
    settings.carryTo(settings.freeSpace(codingModels), QStringLiteral("x"));
    EXPECT_FALSE(settings.view->workerTopTargeted);
    settings.carryTo(middleOf(settings.named(codingBots)), QStringLiteral("x"));
    EXPECT_TRUE(settings.view->chainBotDropTargeted["worker"]);
    settings.leave();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !settings.view->chainBotDropTargeted["worker"]; }));
}

TEST(ChainDrag, ChecksForALocalModelOnlyAfterAFreshDrop) {
    ChainDrags settings;
    settings.view->ollamaModels = {testing::model("llama")};
    settings.view->ollamaModels[0].type = "ollama";
    settings.view->ollamaModels[0].provider_key = "openrouter";
    settings.show();
    settings.dropFree("llama", codingModels);
    settings.platform.settle();
    const std::size_t asked = settings.platform.children.size();
    EXPECT_GE(asked, 1U);
    settings.dropFree(settings.view->workerModels.back().uid().c_str(), photoModels);
    settings.platform.settle();
    EXPECT_THAT(settings.ids(TargetList::photo), ElementsAre("llama"));
    EXPECT_EQ(settings.platform.children.size(), asked);
}

TEST(ChainDrag, ToTheLibraryTakesTheRowOut) {
    ChainDrags settings;
    settings.show();
    settings.view->handleLibraryDrop({platform::textPayload("B")});
    settings.settle();
    EXPECT_EQ(settings.named(QStringLiteral("Model b"), coding), nullptr);
    EXPECT_NE(settings.named(QStringLiteral("Model c"), coding), nullptr);
}

TEST(ChainKeyboardDrag, ReordersByArrowsAndSavesAtTheDrop) {
    ChainDrags settings;
    settings.show();
    settings.focus(QStringLiteral("Model a"), coding);
    settings.key(Qt::Key_Space);
    EXPECT_TRUE(settings.faint("A"));
    settings.key(Qt::Key_Down);
    settings.key(Qt::Key_Down);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("b", "c", "a"));
    settings.key(Qt::Key_Space);
    EXPECT_THAT(settings.saved(TargetList::worker), ElementsAre("b", "c", "a"));
}

TEST(ChainKeyboardDrag, ReachesOtherChains) {
    ChainDrags settings;
    settings.show();
    settings.focus(QStringLiteral("Model c"), coding);
    settings.key(Qt::Key_Space);
    settings.key(Qt::Key_Down); // the rest of the chain's own area
    settings.key(Qt::Key_Down); // the strip of the photo chain
    settings.key(Qt::Key_Return);
    EXPECT_THAT(settings.saved(TargetList::photo), ElementsAre("c"));
    EXPECT_THAT(settings.saved(TargetList::worker), ElementsAre("a", "b"));
}

TEST(ChainDrag, InAChainOfAHundredMovesOneRow) {
    ChainDrags settings;
    settings.view->workerModels.clear();
    for (int i = 0; i < 100; ++i) {
        const std::string number = std::to_string(i);
        settings.view->workerModels.push_back(testing::model("m" + number, "M" + number));
    }
    settings.show();
    KeyedListModel& rows = *settings.chain(TargetList::worker).models();
    const QSignalSpy moves(&rows, &QAbstractItemModel::rowsMoved);
    const QSignalSpy inserts(&rows, &QAbstractItemModel::rowsInserted);
    settings.lift(QStringLiteral("Model m0"), coding);
    settings.carryTo(settings.row("m9"), QStringLiteral("M0"));
    EXPECT_EQ(moves.count(), 1);
    EXPECT_EQ(inserts.count(), 0);
    EXPECT_EQ(settings.ids(TargetList::worker).at(9), "m0");
}

} // namespace
} // namespace varnhold::testing
