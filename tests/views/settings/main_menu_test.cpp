#include <gmock/gmock.h>
#include <string>

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

#include "announced.h"
#include "shown_window.h"
#include "views/text/qt_text.h"
#include "waiting.h"

namespace varnhold::testing {
namespace {

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct MenuWindow : ShownWindow {
    MenuWindow() { window.resize(window.sizeOn({2560, 1440})); }
    [[nodiscard]] SettingsPage* page() const {
        return qobject_cast<SettingsPage*>(window.centralWidget());
    }
    [[nodiscard]] QQuickItem* text(const QString& name) const {
        return announced(page()->rootObject(), name, QAccessible::EditableText);
    }

    void edit(const QString& name) {
        QTest::mouseClick(page(), Qt::LeftButton, {}, middleOf(text(name)));
        EXPECT_EQ(page()->quickWindow()->activeFocusItem(), text(name));
    }
    // Wherever the keyboard is.
    static void type(const QString& words) { QTest::keyClicks(QApplication::focusWidget(), words); }

    [[nodiscard]] QMenu* menuOf(QAction* row) const {
        for (const QAction* each : window.menuBar()->actions()) {
            if (each->menu()->actions().contains(row)) {
                return each->menu();
            }
        }
        return nullptr;
    }
    // As a mouse does it: a press on the menu's title, and one on the row.
    void click(const QString& title) {
        QAction* row = action(title);
        QMenu* menu = menuOf(row);
        QTest::mouseClick(window.menuBar(), Qt::LeftButton, {},
                          window.menuBar()->actionGeometry(menu->menuAction()).center());
        ASSERT_TRUE(menu->isVisible());
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(row).center());
    }
    // As the keyboard does it: the key beside the row.
    void pressKeyOf(const QString& title) {
        const QKeyCombination keys = action(title)->shortcut()[0];
        QTest::keyClick(QApplication::focusWidget(), keys.key(), keys.keyboardModifiers());
    }
    // As the keyboard does it without knowing the keys: Alt and arrows.
    void walkTo(const QString& title) {
        QAction* row = action(title);
        QMenu* menu = menuOf(row);
        window.menuBar()->setActiveAction(menu->menuAction());
        menu->setActiveAction(row);
        QTest::keyClick(menu, Qt::Key_Return);
    }
};

enum class Way { mouse, key, arrows };

class EachWay : public ::testing::TestWithParam<Way> {
protected:
    MenuWindow shown;

    void choose(const QString& title) {
        switch (GetParam()) {
        case Way::mouse:
            return shown.click(title);
        case Way::key:
            return shown.pressKeyOf(title);
        case Way::arrows:
            return shown.walkTo(title);
        }
    }
};

TEST_P(EachWay, TheRowsOfEditWorkOnWhatIsBeingEdited) {
    const std::string& prompt = shown.home.view->masterPrompt;
    shown.edit(u"Master Prompt Injection"_s);
    MenuWindow::type(u"abc"_s);
    choose(u"Select All"_s);
    choose(u"Copy"_s);
    EXPECT_EQ(prompt, "abc");
    choose(u"Cut"_s);
    EXPECT_EQ(prompt, "");
    choose(u"Paste"_s);
    choose(u"Paste"_s);
    EXPECT_EQ(prompt, "abcabc");
    choose(u"Undo"_s);
    EXPECT_EQ(prompt, "abc");
    choose(u"Redo"_s);
    EXPECT_EQ(prompt, "abcabc");
}

TEST_P(EachWay, WhatIsTypedNextComesWhereTheCursorWas) {
    const std::string& prompt = shown.home.view->masterPrompt;
    shown.edit(u"Master Prompt Injection"_s);
    MenuWindow::type(u"ab"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
    choose(u"Copy"_s); // of nothing
    MenuWindow::type(u"x"_s);
    EXPECT_EQ(prompt, "axb");
}

TEST_P(EachWay, TheRowsOfEditWorkInAFieldToo) {
    const std::string& key = shown.home.view->openrouterKey;
    shown.edit(u"API key of OpenRouter"_s);
    MenuWindow::type(u"k1"_s);
    choose(u"Select All"_s);
    choose(u"Cut"_s);
    EXPECT_EQ(key, "");
    choose(u"Paste"_s);
    MenuWindow::type(u"2"_s);
    EXPECT_EQ(key, "k12");
    choose(u"Undo"_s);
    EXPECT_EQ(key, "k1");
}

TEST_P(EachWay, RowsOfTheApplicationLeadThere) {
    choose(u"Preferences…"_s);
    choose(u"Close Preferences Window"_s);
    choose(u"Quit Varnhold (Stop All Agents)"_s);
    choose(u"Custom Groups…"_s);
    EXPECT_THAT(shown.chosen,
                ElementsAre(MainMenuAction::openModelSelector, MainMenuAction::closePrefsWindow,
                            MainMenuAction::terminate, MainMenuAction::openManageCustomGroups));
}

TEST_P(EachWay, CloseWindowClosesIt) {
    choose(u"Close Window"_s);
    EXPECT_FALSE(shown.window.isVisible());
    EXPECT_EQ(shown.closings, 1);
    EXPECT_TRUE(shown.window.bringToFront()) << "comes back as one that was closed";
}

TEST_P(EachWay, HidePutsTheWindowAsideAndClosesNothing) {
    choose(u"Hide Varnhold"_s);
    EXPECT_TRUE(shown.window.isMinimized());
    EXPECT_EQ(shown.closings, 0);
    EXPECT_FALSE(shown.window.bringToFront());
    EXPECT_FALSE(shown.window.isMinimized());
    EXPECT_TRUE(shown.window.isVisible());
}

TEST_P(EachWay, RowsAboutOtherProgramsDoNothing) {
    for (const QString& title : {u"Hide Others"_s, u"Show All"_s}) {
        EXPECT_FALSE(shown.action(title)->isEnabled());
    }
    EXPECT_THAT(shown.chosen, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(MainMenu, EachWay, ::testing::Values(Way::mouse, Way::key, Way::arrows),
                         [](const auto& way) {
                             return way.param == Way::mouse ? "Mouse"
                                    : way.param == Way::key ? "Key"
                                                            : "Arrows";
                         });

TEST(MainMenu, TellsWhatTheProgramIs) {
    MenuWindow shown;
    shown.click(u"About Varnhold"_s);
    QQuickItem* about = announced(shown.page()->rootObject(), u"About Varnhold"_s);
    ASSERT_NE(about, nullptr);
    EXPECT_NE(announced(about, toQString("Version " + shown.home.constants.VARNHOLD_VERSION)),
              nullptr);
    EXPECT_NE(announced(about, u"MIT licence"_s), nullptr);
    QTest::keyClick(shown.page(), Qt::Key_Escape);
    EXPECT_EQ(announced(shown.page()->rootObject(), u"About Varnhold"_s), nullptr);
}

} // namespace
} // namespace varnhold::testing
