#include "shown_item.h"

namespace varnhold::testing {
namespace {

// A page with a button, and over it a sheet with a field and two buttons.
constexpr auto pageWithSheet = R"(
Item {
    id: page
    property var heard: []
    property bool asked: false
    TextButton { x: 4; y: 4; text: "Behind"; onClicked: page.heard = page.heard.concat("behind") }
    Sheet {
        title: "Add a thing"
        visible: page.asked
        onDismissed: { page.heard = page.heard.concat("dismissed"); page.asked = false }
        Column {
            spacing: 8
            Field { name: "Name" }
            TextButton { text: "Cancel"; onClicked: page.heard = page.heard.concat("cancel") }
            TextButton { text: "Add" }
        }
    }
})";

TEST(Sheet, IsDismissedByEscapeAndGivesTheKeyboardBack) {
    ShownItem shown(pageWithSheet);
    QQuickItem* behind = shown.named(QStringLiteral("Behind"));
    behind->forceActiveFocus(Qt::TabFocusReason);
    shown.root()->setProperty("asked", true);
    EXPECT_EQ(shown.focused(), shown.named(QStringLiteral("Name")));
    shown.press(Qt::Key_Escape);
    EXPECT_EQ(shown.heard(), QStringList(QStringLiteral("dismissed")));
    EXPECT_EQ(shown.focused(), behind);
}

TEST(Sheet, KeepsTheKeyboardToItself) {
    ShownItem shown(pageWithSheet);
    shown.root()->setProperty("asked", true);
    const QStringList order{QStringLiteral("Cancel"), QStringLiteral("Add"), QStringLiteral("Name"),
                            QStringLiteral("Cancel")};
    for (const QString& name : order) {
        shown.press(Qt::Key_Tab);
        EXPECT_EQ(shown.focused(), shown.named(name)) << qPrintable(name);
    }
    const QStringList back{QStringLiteral("Name"), QStringLiteral("Add")};
    for (const QString& name : back) {
        shown.press(Qt::Key_Backtab);
        EXPECT_EQ(shown.focused(), shown.named(name)) << qPrintable(name);
    }
}

TEST(Sheet, KeepsPressesFromThePage) {
    ShownItem shown(pageWithSheet);
    shown.root()->setProperty("asked", true);
    shown.click(QStringLiteral("Behind"));
    EXPECT_TRUE(shown.heard().isEmpty());
    shown.click(QStringLiteral("Cancel"));
    EXPECT_EQ(shown.heard(), QStringList(QStringLiteral("cancel")));
}

TEST(Sheet, IsADialogOfItsName) {
    ShownItem shown(pageWithSheet);
    shown.root()->setProperty("asked", true);
    QQuickItem* dialog = shown.named(QStringLiteral("Add a thing"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(dialog)->role(), QAccessible::Dialog);
}

constexpr auto menu = R"(
Item {
    id: page
    property var heard: []
    TextButton { x: 4; y: 4; text: "More"; onClicked: menu.openAt(page, 30, 40) }
    ContextMenu {
        id: menu
        rows: [
            { kind: "action", title: "Pause", symbol: "pause-fill" },
            { kind: "divider" },
            { kind: "section", title: "Connection Service" },
            { kind: "action", title: "telegram", checked: true },
            { kind: "action", title: "slack" },
            { kind: "action", title: "Delete", symbol: "trash", destructive: true }
        ]
        onTriggered: row => page.heard = page.heard.concat(String(row))
    }
})";

TEST(ContextMenu, TellsWhichRowWasPressed) {
    ShownItem shown(menu);
    shown.click(QStringLiteral("More"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown.named(QStringLiteral("slack")) != nullptr; }));
    shown.click(QStringLiteral("slack"));
    EXPECT_EQ(shown.heard(), QStringList(QStringLiteral("4")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.named(QStringLiteral("slack")) == nullptr; }));
}

TEST(ContextMenu, GoesFromActionToActionByTheArrowKeys) {
    ShownItem shown(menu);
    shown.click(QStringLiteral("More"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown.named(QStringLiteral("slack")) != nullptr; }));
    shown.press(Qt::Key_Down);
    shown.press(Qt::Key_Down);
    shown.press(Qt::Key_Return);
    EXPECT_EQ(shown.heard(), QStringList(QStringLiteral("3")));
}

TEST(ContextMenu, IsLeftByEscapeWithNothingChosen) {
    ShownItem shown(menu);
    QQuickItem* more = shown.named(QStringLiteral("More"));
    more->forceActiveFocus(Qt::TabFocusReason);
    shown.press(Qt::Key_Space);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown.named(QStringLiteral("Pause")) != nullptr; }));
    shown.press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.named(QStringLiteral("Pause")) == nullptr; }));
    EXPECT_TRUE(shown.heard().isEmpty());
    EXPECT_EQ(shown.focused(), more);
}

TEST(ContextMenu, ClosesAlsoWhenTheChoiceChangesItsRows) {
    ShownItem shown(R"(
Item {
    id: page
    property bool paused: false
    TextButton { text: "More"; onClicked: menu.openAt(page, 30, 40) }
    ContextMenu {
        id: menu
        rows: [{ title: page.paused ? "Resume" : "Pause" }]
        onTriggered: page.paused = !page.paused
    }
})");
    for (const QString& title :
         {QStringLiteral("Pause"), QStringLiteral("Resume"), QStringLiteral("Pause")}) {
        shown.click(QStringLiteral("More"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return shown.named(title) != nullptr; }));
        shown.click(title);
        ASSERT_TRUE(QTest::qWaitFor([&] { return shown.named(title) == nullptr; }));
    }
    EXPECT_TRUE(shown.root()->property("paused").toBool());
}

TEST(ContextMenu, LeavesTheKeyboardToTheSheetThatItOpens) {
    ShownItem shown(R"(
Item {
    id: page
    TextButton { text: "More"; onClicked: menu.openAt(page, 30, 40) }
    ContextMenu {
        id: menu
        rows: [{ title: "Set Token…" }]
        onTriggered: sheet.visible = true
    }
    Sheet { id: sheet; visible: false; Field { name: "Token" } }
})");
    shown.named(QStringLiteral("More"))->forceActiveFocus(Qt::TabFocusReason);
    shown.press(Qt::Key_Space);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return shown.named(QStringLiteral("Set Token…")) != nullptr; }));
    shown.press(Qt::Key_Down);
    shown.press(Qt::Key_Return);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return shown.named(QStringLiteral("Set Token…")) == nullptr; }));
    EXPECT_EQ(shown.focused(), shown.named(QStringLiteral("Token")));
}

TEST(ContextMenu, TellsWhatItsRowsAre) {
    ShownItem shown(menu);
    shown.click(QStringLiteral("More"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown.named(QStringLiteral("slack")) != nullptr; }));
    const auto spoken = [&shown](const QString& name) {
        return QAccessible::queryAccessibleInterface(shown.named(name));
    };
    EXPECT_EQ(spoken(QStringLiteral("Delete"))->role(), QAccessible::MenuItem);
    EXPECT_EQ(spoken(QStringLiteral("telegram"))->state().checked, 1U);
    EXPECT_EQ(spoken(QStringLiteral("slack"))->state().checked, 0U);
    EXPECT_FALSE(shown.named(QStringLiteral("Connection Service"))->isEnabled());
}

TEST(Toast, IsSpokenOnlyWhileItIsShown) {
    ShownItem shown(R"(
Item {
    property bool saved: false
    Toast { text: "Saved"; shown: parent.saved }
})");
    EXPECT_EQ(shown.named(QStringLiteral("Saved")), nullptr);
    shown.root()->setProperty("saved", true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown.named(QStringLiteral("Saved")) != nullptr; }));
    shown.root()->setProperty("saved", false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.named(QStringLiteral("Saved")) == nullptr; }));
}

} // namespace
} // namespace varnhold::testing
