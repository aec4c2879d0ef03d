#include <string>
#include <vector>

#include "settings/chain_sections.h"
#include "shown_sheets.h"
#include "views/colors/colors.h"
#include "waiting.h"

namespace varnhold::testing {
namespace {

struct WholeWindow : ::testing::Test, ShownSheets {
    [[nodiscard]] QQuickItem* part(const char* name) const {
        return page->rootObject()->findChild<QQuickItem*>(QString::fromUtf8(name));
    }
    [[nodiscard]] static bool holds(const QQuickItem* around, const QQuickItem* item) {
        for (; item != nullptr && item != around; item = item->parentItem()) {
        }
        return item != nullptr;
    }
};

TEST_F(WholeWindow, HasAllItsHeadings) {
    show();
    for (const char* title :
         {"Bots", "Library", "Providers", "Master Prompt Injection", "Bot Prompt", "Reset"}) {
        EXPECT_TRUE(shows(title)) << title;
    }
}

TEST_F(WholeWindow, TellsWhereItsItemsAreAfterItHasBeenMoved) {
    show();
    window.move(window.pos() + QPoint(40, 30));
    QQuickItem* top = part("topBlock");
    ASSERT_NE(top, nullptr);
    const QPointF inPage = top->mapToScene({0, 0});
    QTRY_COMPARE(top->mapToGlobal({0, 0}).toPoint(), page->mapToGlobal(inPage.toPoint()));
    QAccessibleInterface* told =
        QAccessible::queryAccessibleInterface(named(QStringLiteral("Reset")));
    ASSERT_NE(told, nullptr);
    EXPECT_EQ(told->rect().topLeft(),
              page->mapToGlobal(named(QStringLiteral("Reset"))->mapToScene({0, 0}).toPoint()));
}

TEST_F(WholeWindow, HasATopBlockOfItsHeightOverTheChains) {
    show();
    const QQuickItem* top = part("topBlock");
    ASSERT_NE(top, nullptr);
    EXPECT_EQ(top->height(), 420);
    EXPECT_EQ(top->mapToScene({0, 0}), part("rightPane")->mapToScene({0, 0}));
    EXPECT_EQ(top->width(), part("rightPane")->width());
}

// What is seen of each; `seen`: what areas around the item leave of it.
void collectScrollBars(const QQuickItem* item, QRectF seen, QList<QRectF>& places) {
    const QRectF place = item->mapRectToScene({0, 0, item->width(), item->height()});
    if (!item->isVisible()) {
        return;
    }
    if (QByteArray(item->metaObject()->className()).startsWith("SlimScrollBar")) {
        places.append(place.intersected(seen));
    }
    if (item->clip()) {
        seen = seen.intersected(place);
    }
    for (const QQuickItem* child : item->childItems()) {
        collectScrollBars(child, seen, places);
    }
}

TEST_F(WholeWindow, HasNoScrollBarOnAnother) {
    fill(*view);
    show();
    for (const QSize& size :
         {QSize(1200, 700), QSize(1000, 850), QSize(900, 600), QSize(1205, 845)}) {
        window.resize(size);
        QList<QRectF> places;
        WAIT_UNTIL((places.clear(), collectScrollBars(page->rootObject(), page->rect(), places),
                    !places.isEmpty()));
        for (qsizetype one = 0; one < places.size(); ++one) {
            for (qsizetype other = one + 1; other < places.size(); ++other) {
                EXPECT_FALSE(places[one].intersects(places[other]))
                    << size.width() << " by " << size.height();
            }
        }
    }
}

TEST_F(WholeWindow, WithAnEmptyLibraryShowsTheLocalToolsAlone) {
    show();
    EXPECT_TRUE(shows("Local Tools"));
    EXPECT_TRUE(shows("Whisper (transcription, free/local)"));
    EXPECT_TRUE(shows("say (voice reply, free/local)"));
    EXPECT_FALSE(shows("Direct"));
    EXPECT_FALSE(shows("Ollama"));
}

TEST_F(WholeWindow, HintsGoAndComeWithTheirSwitchAndNothingElseChanges) {
    fill(*view);
    view->showHints = true;
    show();
    const std::vector<const char*> hints{
        "Your Telegram AI agents — each bot is a separate assistant",
        "All available AI models from your connected providers — drag them into chains",
        "Connect your AI accounts — sign in or paste an API key to unlock each provider's models",
        "Injected into every bot's system prompt — use it to define your identity, values, and "
        "global rules",
        "· Additional instructions specific to the selected bot's role"};
    for (const char* hint : hints) {
        EXPECT_TRUE(shows(hint)) << hint;
    }
    for (const ChainSection& section : chainSections()) {
        EXPECT_TRUE(shows(std::string(section.hint).c_str())) << section.hint;
    }
    click("Hints");
    EXPECT_FALSE(view->showHints);
    for (const char* hint : hints) {
        EXPECT_FALSE(shows(hint)) << hint;
    }
    for (const ChainSection& section : chainSections()) {
        EXPECT_FALSE(shows(std::string(section.hint).c_str())) << section.hint;
    }
    EXPECT_EQ(saves(), 0);
    click("Hints");
    EXPECT_TRUE(shows(hints.front()));
    EXPECT_EQ(saves(), 0);
}

TEST_F(WholeWindow, LeavesItsControlsOutOfTheWayOfScrollBars) {
    for (int i = 0; i < 40; ++i) {
        view->userBots.push_back(varnhold::testing::bot("bot" + std::to_string(i)));
        view->directModels.push_back(
            testing::model("m" + std::to_string(i), "M" + std::to_string(i)));
        view->governorModels.push_back(
            testing::model("g" + std::to_string(i), "G" + std::to_string(i)));
    }
    view->customGroups = {CustomBotGroup{.name = "Crew", .models = view->governorModels},
                          CustomBotGroup{.name = "Reserve", .models = view->governorModels}};
    view->showHints = true;
    show();
    platform.settle();
    static_cast<void>(page->grabFramebuffer());
    int bars = 0;
    for (const QQuickItem* bar : page->rootObject()->findChildren<QQuickItem*>()) {
        if (!bar->inherits("QQuickScrollBar") || !bar->isVisible()) {
            continue;
        }
        ++bars;
        const QRectF way(bar->mapToScene({}), bar->size());
        firstAnnounced(page->rootObject(), [&](const QAccessibleInterface& spoken) {
            const auto* item = qobject_cast<const QQuickItem*>(spoken.object());
            const bool pressed =
                spoken.role() == QAccessible::Button || spoken.role() == QAccessible::RadioButton;
            if (pressed && holds(bar->parentItem(), item)) {
                const QRectF place(item->mapToScene({}), item->size());
                EXPECT_FALSE(place.intersects(way)) << spoken.text(QAccessible::Name).toStdString();
            }
            return false;
        });
    }
    EXPECT_GE(bars, 5) << "bots, library, providers, chains, groups";
}

TEST_F(WholeWindow, ObjectivesBeginWithTheirEditor) {
    view->customGroups = {CustomBotGroup{.name = "Crew"}};
    show();
    click("Objectives");
    EXPECT_TRUE(QTest::qWaitFor([this] { return focusedName() == "Objectives of Crew"; }));
    type(QStringLiteral("x"));
    EXPECT_EQ(view->customGroups.front().objectives, "x");
    click("Hide Objectives");
    EXPECT_FALSE(shows("Objectives of Crew"));
}

TEST_F(WholeWindow, TheLibrarysPlusOpensTheForm) {
    show();
    focus("Add a model to the library");
    press(Qt::Key_Space);
    EXPECT_TRUE(view->showAddModelSheet);
    EXPECT_TRUE(shows("Add Model to Library"));
    press(Qt::Key_Escape);
    EXPECT_EQ(focusedName(), "Add a model to the library");
}

TEST_F(WholeWindow, ABotWithoutATokenLeadsToItsSheetAndBack) {
    view->userBots = {varnhold::testing::bot("ops")};
    show();
    click("Connect");
    ASSERT_TRUE(view->tokenSheetBot);
    type(QStringLiteral("1:a"));
    press(Qt::Key_Return);
    EXPECT_EQ(loadBots(constants).front().token, "1:a");
    EXPECT_FALSE(shows("Connect"));
}

TEST_F(WholeWindow, AddingABotWithoutItsTokenRaisesTheAlert) {
    show();
    fillIn("Role", "ops");
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_TRUE(view->showAlert);
    EXPECT_TRUE(shows("Please fill in both the Role and the Token fields."));
    press(Qt::Key_Return);
    EXPECT_FALSE(view->showAlert);
    EXPECT_EQ(valueOf("Role"), "ops");
}

} // namespace
} // namespace varnhold::testing
