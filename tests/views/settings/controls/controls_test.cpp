#include <QSignalSpy>
#include <QWheelEvent>
#include <gmock/gmock.h>

#include "shown_item.h"

namespace varnhold::testing {
namespace {

QString text(QQuickItem* item, QAccessible::Text kind) {
    return QAccessible::queryAccessibleInterface(item)->text(kind);
}

QAccessible::Role role(QQuickItem* item) {
    return QAccessible::queryAccessibleInterface(item)->role();
}

// A ladder of three steps.
constexpr auto ladder = R"(
Item {
    id: page
    property int step: 0
    property var heard: []
    Stepper {
        x: 20; y: 20
        label: "Effort"
        valueText: ["Off", "Low", "High"][page.step]
        canGoLeft: page.step > 0
        canGoRight: page.step < 2
        help: "How long it thinks"
        onGoneLeft: { page.step -= 1; page.heard = page.heard.concat("left") }
        onGoneRight: { page.step += 1; page.heard = page.heard.concat("right") }
    }
})";

TEST(Stepper, GoesOneStepForEachPressOfAnArrow) {
    ShownItem shown(ladder);
    shown.click(QStringLiteral("More Effort"));
    shown.click(QStringLiteral("More Effort"));
    shown.click(QStringLiteral("Less Effort"));
    EXPECT_EQ(shown.heard(), QStringList({QStringLiteral("right"), QStringLiteral("right"),
                                          QStringLiteral("left")}));
}

TEST(Stepper, StopsAtTheEndsOfItsLadder) {
    ShownItem shown(ladder);
    EXPECT_FALSE(shown.named(QStringLiteral("Less Effort"))->isEnabled());
    EXPECT_DOUBLE_EQ(shown.named(QStringLiteral("Less Effort"))->opacity(), 0.3);
    shown.click(QStringLiteral("Less Effort"));
    EXPECT_TRUE(shown.heard().isEmpty());
    for (int press = 0; press < 5; ++press) {
        shown.click(QStringLiteral("More Effort"));
    }
    EXPECT_EQ(shown.heard().size(), 2);
    EXPECT_FALSE(shown.named(QStringLiteral("More Effort"))->isEnabled());
}

TEST(Stepper, TakesTheArrowKeysAndStopsAtTheEnds) {
    ShownItem shown(ladder);
    shown.press(Qt::Key_Tab);
    ASSERT_EQ(shown.focused(), shown.named(QStringLiteral("Effort")));
    shown.press(Qt::Key_Left);
    EXPECT_TRUE(shown.heard().isEmpty());
    for (int press = 0; press < 5; ++press) {
        shown.press(Qt::Key_Right);
    }
    EXPECT_EQ(shown.heard().size(), 2);
    shown.press(Qt::Key_Left);
    EXPECT_EQ(shown.root()->property("step").toInt(), 1);
}

TEST(Stepper, TellsItsNameAndValue) {
    ShownItem shown(ladder);
    QQuickItem* stepper = shown.named(QStringLiteral("Effort"));
    EXPECT_EQ(role(stepper), QAccessible::SpinBox);
    EXPECT_EQ(text(stepper, QAccessible::Description), QStringLiteral("Off"));
    shown.root()->setProperty("step", 2);
    EXPECT_EQ(text(stepper, QAccessible::Description), QStringLiteral("High"));
}

constexpr auto services = R"(
Item {
    id: page
    property string service: "telegram"
    property bool takes: true
    property var heard: []
    function choose(value) {
        heard = heard.concat(value);
        if (takes)
            service = value;
    }
    Segmented {
        x: 20; y: 20
        name: "Service"
        values: ["telegram", "slack", "none"]
        current: page.service
        onChosen: value => page.choose(value)
    }
    Picker {
        x: 20; y: 80
        name: "Service to pick"
        values: ["telegram", "slack", "none"]
        current: page.service
        onChosen: value => page.choose(value)
    }
})";

TEST(Segmented, ChoosesByPress) {
    ShownItem shown(services);
    shown.click(QStringLiteral("slack"));
    shown.click(QStringLiteral("slack"));
    EXPECT_EQ(shown.heard(), QStringList(QStringLiteral("slack")));
}

TEST(Segmented, ChoosesTheNeighbourByArrowKeys) {
    ShownItem shown(services);
    shown.press(Qt::Key_Tab);
    ASSERT_EQ(shown.focused(), shown.named(QStringLiteral("telegram")));
    shown.press(Qt::Key_Left);
    EXPECT_TRUE(shown.heard().isEmpty());
    shown.press(Qt::Key_Right);
    EXPECT_EQ(shown.focused(), shown.named(QStringLiteral("slack")));
    shown.press(Qt::Key_Right);
    shown.press(Qt::Key_Right);
    EXPECT_EQ(shown.heard(), QStringList({QStringLiteral("slack"), QStringLiteral("none")}));
}

TEST(Segmented, TellsWhichIsChosen) {
    ShownItem shown(services);
    EXPECT_EQ(role(shown.named(QStringLiteral("Service"))), QAccessible::Grouping);
    const auto isChosen = [&shown](const QString& name) {
        const auto* spoken = QAccessible::queryAccessibleInterface(shown.named(name));
        return spoken->role() == QAccessible::RadioButton && spoken->state().checked == 1;
    };
    EXPECT_TRUE(isChosen(QStringLiteral("telegram")));
    EXPECT_FALSE(isChosen(QStringLiteral("slack")));
}

TEST(Picker, ChoosesFromItsMenuByKeys) {
    ShownItem shown(services);
    shown.press(Qt::Key_Tab);
    shown.press(Qt::Key_Tab);
    ASSERT_EQ(shown.focused(), shown.named(QStringLiteral("Service to pick")));
    shown.press(Qt::Key_Space);
    shown.press(Qt::Key_Down);
    shown.press(Qt::Key_Return);
    EXPECT_EQ(shown.heard(), QStringList(QStringLiteral("slack")));
}

TEST(Picker, KeepsShowingTheValueThatTheRecordHas) {
    ShownItem shown(services);
    shown.root()->setProperty("takes", false);
    QQuickItem* picker = shown.named(QStringLiteral("Service to pick"));
    picker->forceActiveFocus();
    shown.press(Qt::Key_Down);
    EXPECT_EQ(shown.heard(), QStringList(QStringLiteral("slack")));
    EXPECT_EQ(text(picker, QAccessible::Description), QStringLiteral("telegram"));
}

TEST(Chip, AsksToBeTakenAway) {
    ShownItem shown(R"(
Item {
    property var heard: []
    Chip { x: 20; y: 20; symbol: "folder-fill"; text: "notes"; onRemoved: heard = ["removed"] }
})");
    EXPECT_EQ(role(shown.named(QStringLiteral("notes"))), QAccessible::ListItem);
    shown.click(QStringLiteral("Remove notes"));
    EXPECT_EQ(shown.heard(), QStringList(QStringLiteral("removed")));
}

TEST(ModelBlockView, AsksToBeRemovedByTheKeyboardToo) {
    ShownItem shown(R"(
Item {
    property var heard: []
    ModelBlockView { width: 300; name: "Model"; tag: "Direct"; ground: "blue"; deletable: true
                 onDeleteRequested: heard = ["removed"] }
})");
    EXPECT_EQ(text(shown.named(QStringLiteral("Model")), QAccessible::Description),
              QStringLiteral("Direct"));
    shown.press(Qt::Key_Tab);
    ASSERT_EQ(shown.focused(), shown.named(QStringLiteral("Remove from library")));
    shown.press(Qt::Key_Return);
    EXPECT_EQ(shown.heard(), QStringList(QStringLiteral("removed")));
}

TEST(Buttons, ShowARingOnlyWhereTheKeyboardIs) {
    ShownItem shown(R"(
Item {
    IconButton { x: 20; y: 20; symbol: "trash"; help: "Delete it" }
    TextButton { x: 20; y: 60; text: "Save" }
})");
    for (const QString& name : {QStringLiteral("Delete it"), QStringLiteral("Save")}) {
        QQuickItem* button = shown.named(name);
        EXPECT_EQ(role(button), QAccessible::Button);
        shown.click(name);
        EXPECT_FALSE(button->property("visualFocus").toBool());
        shown.press(Qt::Key_Tab);
        EXPECT_EQ(shown.focused(), button);
        EXPECT_TRUE(button->property("visualFocus").toBool());
    }
}

// Things with tool tips and a pointer over them.
struct Tips : ShownItem {
    using ShownItem::ShownItem;

    [[nodiscard]] const QQuickItem* tip() const {
        const QQuickItem* page = widget.quickWindow()->contentItem();
        for (const QQuickItem* layer : page->childItems()) {
            for (const QQuickItem* item : layer->childItems()) {
                if (item->inherits("QQuickPopupItem") && item->isVisible() &&
                    item->parent()->inherits("QQuickToolTip")) {
                    return item;
                }
            }
        }
        return nullptr;
    }
    [[nodiscard]] QString told() const {
        return tip() == nullptr ? QString() : tip()->parent()->property("text").toString();
    }
    void point(const QPoint& at) { QTest::mouseMove(&widget, at); }
    void awaitNone() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return tip() == nullptr; }));
    }
    void awaitTip() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return tip() != nullptr; }));
    }
    // Whether one comes in the time in which one would come.
    [[nodiscard]] bool comes() {
        return QTest::qWaitFor([this] { return tip() != nullptr; }, 1500);
    }
};

TEST(ToolTip, TellsTheHelpUnderThePointerAndGoesWithIt) {
    Tips shown(R"(
Item {
    StatusDot { x: 40; y: 40; help: "Cache <b>warm</b>" }
})");
    shown.point({200, 200});
    shown.point({44, 44});
    EXPECT_EQ(shown.tip(), nullptr);
    shown.awaitTip();
    EXPECT_EQ(shown.told(), QStringLiteral("Cache <b>warm</b>"));
    shown.point({200, 200});
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.tip() == nullptr; }));
}

constexpr auto largeThing = R"(
Item {
    Item {
        width: 400; height: 340
        ToolTipArea { text: "Large" }
    }
    ContextMenu { id: menu; rows: [{ title: "One" }] }
    Item {
        id: opener
        objectName: "opener"
        function open() { menu.openAt(opener, 200, 10) }
    }
})";

TEST(ToolTip, StandsBesideThePointerWhereverThatIs) {
    Tips shown(largeThing);
    for (const QPoint at : {QPoint(100, 40), QPoint(20, 200), QPoint(380, 330)}) {
        shown.point({450, 350});
        shown.point(at);
        shown.awaitTip();
        const QRectF place(shown.tip()->mapToScene({}), shown.tip()->size());
        EXPECT_FALSE(place.contains(at));
        EXPECT_TRUE(place.adjusted(-30, -30, 30, 30).contains(at)) << at.x();
        EXPECT_TRUE(QRectF(shown.widget.rect()).contains(place));
    }
}

TEST(ToolTip, GoesWithAPressAndDoesNotComeBackForIt) {
    Tips shown(largeThing);
    shown.point({450, 350});
    shown.point({100, 40});
    shown.awaitTip();
    QTest::mouseClick(&shown.widget, Qt::LeftButton, {}, {100, 40});
    shown.awaitNone();
    EXPECT_FALSE(shown.comes());
    shown.point({450, 350});
    shown.point({100, 40});
    shown.awaitTip();
}

TEST(ToolTip, IsNotShownOverAnOpenMenu) {
    Tips shown(largeThing);
    QMetaObject::invokeMethod(shown.root()->findChild<QObject*>(QStringLiteral("opener")), "open");
    shown.point({450, 350});
    shown.point({100, 200});
    EXPECT_FALSE(shown.comes());
    shown.press(Qt::Key_Escape);
    QTest::qWait(20);
    shown.point({450, 350});
    shown.point({100, 200});
    shown.awaitTip();
}

TEST(ToolTip, GoesWhileSomebodyScrolls) {
    Tips shown(largeThing);
    shown.point({450, 350});
    shown.point({100, 40});
    shown.awaitTip();
    QWheelEvent wheel({100, 40}, {100, 40}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&shown.widget, &wheel);
    shown.awaitNone();
}

TEST(Label, TellsInFullWhatItHadToCut) {
    ShownItem shown(R"(
Item {
    Label { objectName: "cut"; width: 60; text: "A name that is far too long" }
    Label { objectName: "whole"; y: 30; text: "A name that is far too long" }
    EmojiLabel { objectName: "cutEmoji"; y: 60; width: 60; text: "⚖️ A name that is far too long" }
})");
    const auto find = [&shown](const char* name) {
        return shown.root()->findChild<QQuickItem*>(QString::fromLatin1(name));
    };
    EXPECT_TRUE(find("cut")->property("truncated").toBool());
    EXPECT_FALSE(find("whole")->property("truncated").toBool());
    EXPECT_TRUE(find("cutEmoji")->property("truncated").toBool());
    EXPECT_EQ(text(find("cutEmoji"), QAccessible::Name),
              QStringLiteral("⚖️ A name that is far too long"));
}

TEST(FocusItem, IsAStopAsLongAsItHasTheKeyboard) {
    static QStringList warnings;
    warnings.clear();
    ShownItem shown(R"(
Item {
    FocusItem { objectName: "first"; width: 10; height: 10 }
    FocusItem { objectName: "second"; width: 10; height: 10 }
})");
    auto* first = shown.root()->findChild<QQuickItem*>(QStringLiteral("first"));
    auto* second = shown.root()->findChild<QQuickItem*>(QStringLiteral("second"));
    const auto before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& said) { warnings.append(said); });
    first->forceActiveFocus();
    first->setProperty("tabStop", false);
    EXPECT_TRUE(first->activeFocusOnTab());
    second->forceActiveFocus();
    QCoreApplication::processEvents();
    EXPECT_FALSE(first->activeFocusOnTab());
    first->setProperty("tabStop", true);
    EXPECT_TRUE(first->activeFocusOnTab());
    qInstallMessageHandler(before);
    EXPECT_EQ(warnings, QStringList());
}

} // namespace
} // namespace varnhold::testing
