#include <QQuickWindow>
#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "model_blocks.h"
#include "shown_chains.h"
#include "views/waiting.h"

namespace varnhold::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const QString lessContext = QStringLiteral("Less Context");
const QString moreContext = QStringLiteral("More Context");

// Whether a text that begins like this is to be seen.
bool shows(const QQuickItem* under, const QString& beginning) {
    const QList<QQuickItem*> children = under->childItems();
    return under->isVisible() &&
           ((under->inherits("QQuickText") &&
             under->property("text").toString().startsWith(beginning)) ||
            std::any_of(children.begin(), children.end(),
                        [&](const QQuickItem* child) { return shows(child, beginning); }));
}

struct Section : ShownChains {
    Section() {
        view->workerModels = {testing::model("a", "A"), testing::model("b", "B")};
        view->userBots = {bot("ops"), bot("cto")};
        view->chainBotAssignments = {{"worker", {bot("ops").launchdLabel}}};
    }

    void warm(double warmth) {
        view->cacheWarmth["worker"] = warmth;
        view->changed();
    }
    [[nodiscard]] std::string dot() const {
        for (const char* help : {"Cache warm", "Cache cooling — ping soon", "Cache cold"}) {
            if (named(QString::fromUtf8(help), coding) != nullptr) {
                return help;
            }
        }
        return "none";
    }
    [[nodiscard]] bool enabled(const QString& name) const {
        return named(name, coding)->isEnabled();
    }
    [[nodiscard]] QString value(const QString& stepper, const QString& section) const {
        return named(stepper, section)->property("valueText").toString();
    }
    [[nodiscard]] bool menuIsOpen() const {
        return named(QStringLiteral("How to add models:")) != nullptr;
    }
};

TEST(ChainSection, StandsForEachChainInItsPlace) {
    Section settings;
    settings.show();
    const auto place = [&](const QString& name) {
        return settings.named(name)->mapToScene(QPointF()).toPoint();
    };
    EXPECT_LT(place(governor).y(), place(architect).y());
    EXPECT_EQ(place(architect).y(), place(coding).y());
    EXPECT_LT(place(architect).x(), place(coding).x());
    EXPECT_LT(place(coding).y(), place(photo).y());
    EXPECT_LT(place(photo).x(), place(QStringLiteral("Video Chain")).x());
    EXPECT_LT(place(QStringLiteral("Video Chain")).x(), place(audio).x());
    EXPECT_EQ(settings.named(photo)->height(), settings.named(audio)->height());
}

TEST(ChainSection, LetsTheRowOfADragThatWasGivenUpComeBackGently) {
    Section settings;
    settings.show();
    const QQuickItem* block = blockOf(settings.named(QStringLiteral("Model a"), coding));
    settings.chain(TargetList::worker).startDrag(QStringLiteral("A"));
    EXPECT_DOUBLE_EQ(block->opacity(), 0.1);
    EXPECT_EQ(fadeOf(block), 0);
    settings.platform.advance(std::chrono::seconds(2));
    EXPECT_LT(block->opacity(), 1);
    EXPECT_EQ(fadeOf(block), 150);
    WAIT_UNTIL(block->opacity() == 1);
}

TEST(ChainSection, ShowsHintsWhileTheyAreWantedAndKeepsItsMenuWithoutThem) {
    Section settings;
    const QString hint = QStringLiteral("Silent worker — executes code and shell commands on your "
                                        "Mac. Never talks to you directly.");
    settings.show();
    EXPECT_EQ(settings.named(hint), nullptr);
    settings.model->setShowHints(true);
    EXPECT_NE(settings.named(hint), nullptr);
    settings.model->setShowHints(false);
    EXPECT_EQ(settings.named(hint), nullptr);
    settings.focus(coding, coding); // the title
    settings.key(Qt::Key_Menu);
    EXPECT_TRUE(settings.menuIsOpen());
}

TEST(ChainSection, OpensItsMenuBySecondaryClick) {
    Section settings;
    settings.show();
    settings.click(coding, coding, Qt::RightButton); // on the title
    for (const char* line :
         {"How to add models:", "1. Find a model in the Library panel on the left.",
          "2. Drag it into this chain's drop area below.",
          "3. Drop onto ⤴︎ to insert at the top (highest priority).",
          "4. Models are tried in order — top first, failover down."}) {
        EXPECT_NE(settings.named(QString::fromUtf8(line)), nullptr) << line;
    }
    settings.key(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !settings.menuIsOpen(); }));
}

TEST(ChainSection, OpensItsMenuByKeyboard) {
    Section settings;
    settings.show();
    settings.focus(coding, coding); // the title
    settings.key(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(settings.menuIsOpen());
}

TEST(ChainSection, StepsEffortUntilTheEndOfTheLevels) {
    Section settings;
    settings.show();
    EXPECT_EQ(settings.value(effort, coding), QStringLiteral("Low"));
    settings.click(QStringLiteral("Less Effort"), coding);
    EXPECT_EQ(settings.value(effort, coding), QStringLiteral("Off"));
    EXPECT_FALSE(settings.enabled(QStringLiteral("Less Effort")));
    EXPECT_TRUE(settings.named(effort, coding)->property("inactive").toBool());
    EXPECT_THAT(settings.read(settings.constants.effortPrefsFile), HasSubstr(R"("worker":"off")"));
    settings.focus(effort, coding);
    settings.key(Qt::Key_Left);
    settings.key(Qt::Key_Right);
    settings.key(Qt::Key_Right);
    settings.key(Qt::Key_Right);
    settings.key(Qt::Key_Right);
    EXPECT_EQ(settings.value(effort, coding), QStringLiteral("High"));
    EXPECT_FALSE(settings.enabled(QStringLiteral("More Effort")));
    EXPECT_THAT(settings.read(settings.constants.effortPrefsFile), HasSubstr(R"("worker":"high")"));
    EXPECT_EQ(settings.view->architectEffort, EffortLevel::medium) << "another chain's";
}

TEST(ChainSection, OffTheLadderHasBothArrowsAndGoesDownToItsNeighbour) {
    Section settings;
    settings.view->workerContextTokens = 50000;
    settings.show();
    EXPECT_EQ(settings.value(context, coding), QStringLiteral("50K"));
    EXPECT_TRUE(settings.enabled(lessContext));
    EXPECT_TRUE(settings.enabled(moreContext));
    settings.click(lessContext, coding);
    EXPECT_EQ(settings.value(context, coding), QStringLiteral("32K"));
    EXPECT_THAT(settings.read(settings.constants.contextPrefsFile), HasSubstr(R"("worker":32000)"));
}

TEST(ChainSection, AboveTheLadderCanOnlyGoDownToItsTop) {
    Section settings;
    settings.view->workerContextTokens = 3500000;
    settings.show();
    EXPECT_FALSE(settings.enabled(moreContext));
    settings.click(moreContext, coding);
    EXPECT_EQ(settings.view->workerContextTokens, 3500000);
    settings.click(lessContext, coding);
    EXPECT_EQ(settings.value(context, coding), QStringLiteral("2M"));
    EXPECT_THAT(settings.read(settings.constants.contextPrefsFile),
                HasSubstr(R"("worker":2000000)"));
}

TEST(ChainSection, ExplainsTheBudgetInATip) {
    Section settings;
    settings.show();
    EXPECT_EQ(
        settings.named(context, coding)->property("help").toString(),
        QStringLiteral("Max chat-history tokens fed to this chain. Auto = use the top model's "
                       "max window."));
    EXPECT_EQ(settings.named(effort, coding)->property("help").toString(), QString());
}

TEST(ChainSection, OfAudioHasNoEffortAndLeavesTheStoredOne) {
    Section settings;
    settings.view->voiceEffort = EffortLevel::high;
    settings.show();
    EXPECT_EQ(settings.named(effort, audio), nullptr);
    settings.click(moreContext, audio);
    EXPECT_THAT(settings.read(settings.constants.contextPrefsFile), HasSubstr(R"("voice":8000)"));
    EXPECT_THAT(settings.read(settings.constants.effortPrefsFile), HasSubstr(R"("voice":"high")"));
}

TEST(ChainSection, OfTheArchitectAloneChoosesTheResponse) {
    Section settings;
    settings.show();
    const QString response = QStringLiteral("Response");
    for (const QString& other : {governor, coding, photo, QStringLiteral("Video Chain"), audio}) {
        EXPECT_EQ(settings.named(response, other), nullptr) << qPrintable(other);
    }
    ASSERT_NE(settings.named(response, architect), nullptr);
    EXPECT_LE(settings.named(response, architect)->width(), 220);
    settings.click(QStringLiteral("Text + Voice"), architect);
    EXPECT_EQ(settings.read(settings.constants.responseModeFile), R"("both")");
    settings.click(QStringLiteral("Voice"), architect);
    EXPECT_EQ(settings.read(settings.constants.responseModeFile), R"("voice")");
}

TEST(ChainDot, IsShownOnlyWhileABotOfTheChainWantsToBeKeptWarm) {
    Section settings;
    settings.show();
    EXPECT_EQ(settings.dot(), "Cache cold");
    settings.warm(1.0);
    settings.view->userBots[0].keepaliveEnabled = false;
    settings.view->changed();
    EXPECT_EQ(settings.dot(), "none");
}

TEST(ChainDot, HasLimitsThatBelongToTheColderColour) {
    Section settings;
    settings.show();
    const auto color = [&] {
        return settings.named(QString::fromStdString(settings.dot()), coding)->property("color");
    };
    settings.warm(0.41);
    EXPECT_EQ(settings.dot(), "Cache warm");
    EXPECT_EQ(color(), settings.theme("green"));
    settings.warm(0.4);
    EXPECT_EQ(settings.dot(), "Cache cooling — ping soon");
    EXPECT_EQ(color(), settings.theme("orange"));
    settings.warm(0.15);
    EXPECT_EQ(settings.dot(), "Cache cold");
    EXPECT_EQ(color(), settings.theme("gray"));
    EXPECT_EQ(settings.named(QStringLiteral("Cache cold"), coding)->width(), 7);
}

TEST(ChainSection, OfTheGovernorTellsWhatItIsFor) {
    Section settings;
    settings.show();
    const QString words = QStringLiteral("The Governor is the system-level AI that:");
    const QPoint free = settings.named(governor)->mapToScene(QPointF(200, 300)).toPoint();
    QTest::mouseMove(settings.page, free - QPoint(10, 0));
    QTest::mouseMove(settings.page, free);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return shows(settings.page->quickWindow()->contentItem(), words); }));
}

TEST(ChainBotsZone, ListsItsBotsInOrderAndReleasesThem) {
    Section settings;
    settings.view->userBots[1].isPaused = true;
    settings.view->chainBotAssignments["worker"] = {bot("cto").launchdLabel,
                                                    bot("ops").launchdLabel, "gone"};
    settings.show();
    EXPECT_LT(middleOf(settings.named(QStringLiteral("ops"), coding)).y(),
              middleOf(settings.named(QStringLiteral("cto"), coding)).y());
    EXPECT_EQ(settings.named(QStringLiteral("Drag bots here"), coding), nullptr);
    settings.click(QStringLiteral("Remove ops from Coding Chain"));
    EXPECT_EQ(settings.named(QStringLiteral("ops"), coding), nullptr);
    EXPECT_EQ(settings.read(settings.constants.chainBotAssignmentsFile),
              R"({"worker":["com.ostrelleai.cto.telegramd","gone"]})");
    settings.click(QStringLiteral("Remove cto from Coding Chain"));
    EXPECT_NE(settings.named(QStringLiteral("Drag bots here"), coding), nullptr);
}

// So many bots in a chain that only some of their rows are in sight at a time.
struct ManyBots : Section {
    ManyBots() {
        std::vector<std::string> labels;
        view->userBots.clear();
        for (int i = 0; i < 200; ++i) {
            view->userBots.push_back(bot("bot" + std::to_string(i)));
            labels.push_back(view->userBots.back().launchdLabel);
        }
        view->chainBotAssignments = {{"worker", labels}};
        show({920, 600});
    }

    [[nodiscard]] bool exists(int row) const {
        return named(QStringLiteral("bot%1").arg(row), coding) != nullptr;
    }
    // Until the row, which may not exist, is in the middle of what is seen.
    void scrollTo(int row) const {
        const auto* rows = named(coding);
        QQuickItem* area = rows->parentItem();
        while (!area->inherits("QQuickFlickable")) {
            area = area->parentItem();
        }
        area->setProperty("contentY", area->property("contentY").toReal() +
                                          rows->mapToItem(area, {0, 0}).y() + 25.0 * row);
    }
};

TEST(ChainBotsZone, OfManyHasOnlyTheRowsNearSight) {
    ManyBots settings;
    settings.scrollTo(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return settings.exists(0) && !settings.exists(60); }));
    const qreal height = settings.named(coding)->height();
    EXPECT_GT(height, 200 * 22);
    settings.scrollTo(190);
    EXPECT_TRUE(QTest::qWaitFor([&] { return settings.exists(199) && !settings.exists(0); }));
    EXPECT_EQ(settings.named(coding)->height(), height);
    settings.scrollTo(100);
    EXPECT_TRUE(QTest::qWaitFor([&] { return settings.exists(100) && !settings.exists(199); }));
    EXPECT_TRUE(settings.exists(90) && settings.exists(110));
    settings.click(QStringLiteral("Remove bot104 from Coding Chain"));
    EXPECT_EQ(settings.view->chainBotAssignments["worker"].size(), 199U);
    EXPECT_FALSE(settings.exists(104));
}

TEST(ChainBotsZone, OfManyKeepsTheRowWithTheKeyboard) {
    ManyBots settings;
    settings.scrollTo(0);
    settings.focus(QStringLiteral("Remove bot3 from Coding Chain"));
    settings.key(Qt::Key_Tab);
    QQuickItem* focused = settings.focused();
    EXPECT_EQ(focused, settings.named(QStringLiteral("Remove bot4 from Coding Chain"), coding));
    settings.scrollTo(190);
    EXPECT_TRUE(QTest::qWaitFor([&] { return settings.exists(199) && !settings.exists(0); }));
    EXPECT_EQ(settings.focused(), focused);
    EXPECT_TRUE(settings.exists(4));
    settings.key(Qt::Key_Return);
    EXPECT_EQ(settings.view->chainBotAssignments["worker"].size(), 199U);
}

TEST(ChainModels, SaysWhereToDropInAnEmptyChainButNotInAudio) {
    Section settings;
    settings.show();
    const QString text = QStringLiteral("Drag models here");
    EXPECT_NE(settings.named(text, photo), nullptr);
    EXPECT_EQ(settings.named(text, coding), nullptr);
    EXPECT_EQ(settings.named(text, audio), nullptr);
}

TEST(ChainModels, OfAudioBeginWithTheToolsOfThisMachine) {
    Section settings;
    settings.view->voiceModels = {testing::model("v", "V")};
    settings.show();
    const QQuickItem* whisper =
        settings.named(QStringLiteral("Whisper (transcription, free/local)"), audio);
    const QQuickItem* say = settings.named(QStringLiteral("say (voice reply, free/local)"), audio);
    ASSERT_NE(whisper, nullptr);
    ASSERT_NE(say, nullptr);
    EXPECT_LT(middleOf(whisper).y(), middleOf(say).y());
    EXPECT_LT(middleOf(say).y(), middleOf(settings.named(QStringLiteral("Model v"), audio)).y());
    settings.lift(QStringLiteral("Whisper (transcription, free/local)"), audio);
    EXPECT_FALSE(settings.view->draggingItem);
}

TEST(ChainModels, AreDeletedFromTheLibraryAndStayInTheChain) {
    Section settings;
    settings.write(settings.constants.modelLibraryFile,
                   encodeLibrary({.models = {testing::model("a"), testing::model("b")}}));
    settings.show();
    settings.click(QStringLiteral("Remove from library"), QStringLiteral("Model a"));
    EXPECT_THAT(settings.read(settings.constants.modelLibraryFile), Not(HasSubstr("Model a")));
    EXPECT_THAT(settings.read(settings.constants.modelLibraryFile), HasSubstr("Model b"));
    EXPECT_NE(settings.named(QStringLiteral("Model a"), coding), nullptr);
}

} // namespace
} // namespace varnhold::testing
