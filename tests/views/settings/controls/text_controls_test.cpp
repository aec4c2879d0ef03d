#include <QWheelEvent>
#include <string>

#include "shown_item.h"
#include "views/settings/marked_text.h"

namespace varnhold::testing {
namespace {

constexpr auto textControls = R"(
Item {
    id: page
    property string word: "one"
    property var heard: []
    Field {
        x: 10; y: 10; name: "Role"; text: page.word
        onEdited: text => { page.heard = page.heard.concat(text); page.word = text }
    }
    TextArea {
        x: 10; y: 50; name: "Prompt"; text: page.word
        onEdited: text => { page.heard = page.heard.concat(text); page.word = text }
    }
})";

// A clip that nothing is left of would be no clip at all.
TEST(Field, ClipsALongTextOnlyWhereItIsSeen) {
    ShownItem shown(R"(
        ScrollArea {
            contentHeight: 2000
            Item {
                width: 100; height: 2000
                Field { y: 10; width: 100; name: "Key"; text: "a key that is far too long for its field" }
                Field { y: 50; width: 100; name: "Role"; text: "ops" }
            }
        })");
    const auto isClipped = [&](const char* name) {
        static_cast<void>(shown.widget.grabFramebuffer());
        return shown.named(QString::fromLatin1(name))->clip();
    };
    EXPECT_TRUE(isClipped("Key"));
    EXPECT_FALSE(isClipped("Role"));
    QQuickItem* key = shown.named(QStringLiteral("Key"));
    const auto scrollTo = [&](int y) {
        shown.root()->setProperty("contentY", y);
        static_cast<void>(shown.widget.grabFramebuffer());
    };
    scrollTo(1000);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !key->clip(); }));
    scrollTo(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return key->clip(); }));
}

class TextControls : public ::testing::TestWithParam<const char*> {
protected:
    [[nodiscard]] static QString name() { return QString::fromLatin1(GetParam()); }
};

TEST_P(TextControls, TellOfWhatTheUserTypes) {
    ShownItem shown(textControls);
    shown.click(name());
    shown.press(Qt::Key_End);
    shown.type(QStringLiteral("ab"));
    shown.press(Qt::Key_Backspace);
    EXPECT_EQ(shown.heard(), QStringList({QStringLiteral("onea"), QStringLiteral("oneab"),
                                          QStringLiteral("onea")}));
}

TEST_P(TextControls, AreSilentWhenTheirTextIsSet) {
    ShownItem shown(textControls);
    shown.root()->setProperty("word", QStringLiteral("two"));
    EXPECT_EQ(shown.named(name())->property("text").toString(), QStringLiteral("two"));
    shown.root()->setProperty("word", QString());
    EXPECT_TRUE(shown.heard().isEmpty());
}

TEST_P(TextControls, KeepTheCursorWhereTheUserTypes) {
    ShownItem shown(textControls);
    shown.click(name());
    shown.press(Qt::Key_Home);
    shown.press(Qt::Key_Right);
    shown.type(QStringLiteral("xy"));
    EXPECT_EQ(shown.root()->property("word").toString(), QStringLiteral("oxyne"));
}

TEST_P(TextControls, AreReachedAndLeftByTab) {
    ShownItem shown(textControls);
    QQuickItem* control = shown.named(name());
    for (int press = 0; press < 3 && shown.focused() != control; ++press) {
        shown.press(Qt::Key_Tab);
    }
    EXPECT_EQ(shown.focused(), control);
    shown.press(Qt::Key_Tab);
    EXPECT_NE(shown.focused(), control);
    EXPECT_TRUE(shown.heard().isEmpty());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(control)->role(), QAccessible::EditableText);
}

TEST_P(TextControls, OfferToCutAndPasteByASecondaryClick) {
    ShownItem shown(textControls);
    shown.click(name());
    shown.press(Qt::Key_A, Qt::ControlModifier);
    const auto choose = [&shown](const QString& title) {
        const QQuickItem* row = nullptr;
        ASSERT_TRUE(QTest::qWaitFor([&] { return (row = shown.named(title)) != nullptr; }));
        shown.click(title);
        ASSERT_TRUE(QTest::qWaitFor([&] { return shown.named(title) == nullptr; }));
    };
    shown.click(name(), Qt::RightButton);
    choose(QStringLiteral("Cut"));
    EXPECT_EQ(shown.heard().last(), QString());
    shown.click(name(), Qt::RightButton);
    choose(QStringLiteral("Paste"));
    EXPECT_EQ(shown.heard().last(), QStringLiteral("one"));
}

TEST_P(TextControls, LeaveTheRestOfATextAsItIs) {
    const QString odd = QStringLiteral("\u00a0a\u2028b\r\nc\rd\u00a0");
    ShownItem shown(textControls);
    shown.root()->setProperty("word", odd);
    shown.click(name());
    shown.press(Qt::Key_A, Qt::ControlModifier); // selecting is no edit
    shown.press(Qt::Key_End, Qt::ControlModifier);
    shown.press(Qt::Key_End);
    EXPECT_TRUE(shown.heard().isEmpty());
    shown.type(QStringLiteral("e"));
    EXPECT_EQ(shown.heard(), QStringList({odd + QLatin1Char('e')}));
    shown.press(Qt::Key_Backspace);
    shown.press(Qt::Key_Home, Qt::ControlModifier);
    shown.press(Qt::Key_Home);
    shown.type(QStringLiteral("f"));
    EXPECT_EQ(shown.heard().last(), QLatin1Char('f') + odd);
    shown.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown.heard().last(), odd);
}

TEST_P(TextControls, BringBackWhatWasDeletedAsItWas) {
    const QString odd = QStringLiteral("\u00a0a\u2028b\r\nc\rd\u00a0");
    ShownItem shown(textControls);
    shown.root()->setProperty("word", odd);
    shown.click(name());
    shown.press(Qt::Key_A, Qt::ControlModifier);
    shown.press(Qt::Key_Delete);
    EXPECT_EQ(shown.heard().last(), QString());
    shown.press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown.heard().last(), odd);
}

TEST(TextArea, EndsALineWithShiftAsWithout) {
    ShownItem shown(textControls);
    shown.click(QStringLiteral("Prompt"));
    shown.press(Qt::Key_End);
    shown.press(Qt::Key_Return, Qt::ShiftModifier);
    shown.press(Qt::Key_Return);
    EXPECT_EQ(shown.heard().last(), QStringLiteral("one\n\n"));
}

TEST(TextArea, KeepsATextThatLooksLikeTheOneBefore) {
    ShownItem shown(textControls);
    shown.root()->setProperty("word", QStringLiteral("a b\nc"));
    shown.root()->setProperty("word", QStringLiteral("a\u00a0b\r\nc"));
    shown.click(QStringLiteral("Prompt"));
    shown.press(Qt::Key_End, Qt::ControlModifier);
    shown.type(QStringLiteral("d"));
    EXPECT_EQ(shown.heard().last(), QStringLiteral("a\u00a0b\r\ncd"));
}

INSTANTIATE_TEST_SUITE_P(All, TextControls, ::testing::Values("Role", "Prompt"),
                         [](const auto& which) { return std::string(which.param); });

TEST(Field, HidesWhatIsSecret) {
    ShownItem shown(R"(Item { Field { name: "Key"; text: "sesame"; secret: true } })");
    const auto* spoken = QAccessible::queryAccessibleInterface(shown.named(QStringLiteral("Key")));
    EXPECT_EQ(spoken->state().passwordEdit, 1U);
    EXPECT_EQ(shown.named(QStringLiteral("Key"))->property("displayText").toString(),
              QString(6, QChar(0x2022)));
}

// An area lower than the three things in it, which are named in their order.
class ScrolledThings : public ::testing::TestWithParam<const char*> {};

TEST_P(ScrolledThings, AreShownWhenTheKeyboardGoesThere) {
    ShownItem shown(QByteArray(R"(
Item {
    ScrollArea {
        objectName: "area"; width: 200; height: 100
        Column {
            spacing: 40
)") + GetParam() + "\n}\n}\n}");
    const auto* area = shown.root()->findChild<QQuickItem*>(QStringLiteral("area"));
    for (const char* name : {"First", "Second", "Third", "First"}) {
        shown.press(Qt::Key_Tab);
        const QQuickItem* thing = shown.named(QString::fromLatin1(name));
        ASSERT_EQ(shown.focused(), thing);
        const qreal top = thing->mapToItem(area, {}).y();
        EXPECT_GE(top, 0) << name;
        EXPECT_LE(top + thing->height(), area->height()) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Buttons, ScrolledThings, ::testing::Values(R"(
            TextButton { text: "First" }
            TextButton { text: "Second" }
            TextButton { text: "Third" })"));
// Which don't know by themselves how they came by the focus.
INSTANTIATE_TEST_SUITE_P(FieldsAndRows, ScrolledThings, ::testing::Values(R"(
            Field { name: "First" }
            DragSource { width: 100; height: 30; payload: "a"; kind: "model"; name: "Second" }
            Field { name: "Third" })"));

TEST(ScrollArea, StaysWhereItIsWhenAFieldIsClicked) {
    ShownItem shown(R"(
Item {
    ScrollArea {
        objectName: "area"; width: 200; height: 100
        Column {
            spacing: 40
            Field { name: "First" }
            Field { name: "Second" }
            Item { width: 10; height: 100 }
        }
    }
})");
    auto* area = shown.root()->findChild<QQuickItem*>(QStringLiteral("area"));
    area->setProperty("contentY", 10); // which leaves little of the first to be seen
    QTest::mouseClick(&shown.widget, Qt::LeftButton, {}, QPoint(30, 8));
    ASSERT_EQ(shown.focused(), shown.named(QStringLiteral("First")));
    EXPECT_EQ(area->property("contentY").toReal(), 10);
}

TEST(ScrollArea, LeavesTheWheelToTheAreaAroundItAtItsEnd) {
    ShownItem shown(R"(
Item {
    ScrollArea {
        objectName: "outer"; width: 200; height: 100; contentHeight: 400
        ScrollArea {
            objectName: "inner"; width: 100; height: 80
            Item { width: 10; height: 140 }
        }
    }
})");
    const auto position = [&shown](const char* name) {
        return shown.root()
            ->findChild<QQuickItem*>(QString::fromLatin1(name))
            ->property("contentY")
            .toReal();
    };
    const auto turn = [&shown] {
        QWheelEvent wheel({20, 20}, {20, 20}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&shown.widget, &wheel);
    };
    turn();
    EXPECT_EQ(position("inner"), 60);
    EXPECT_EQ(position("outer"), 0);
    turn();
    EXPECT_EQ(position("inner"), 60);
    EXPECT_GT(position("outer"), 0);
}

TEST(MarkedText, EscapesDataAndSetsEmojiInTheirFont) {
    const MarkedText marked;
    const QString markup = marked.plain(QStringLiteral("<b>&⚖️"));
    EXPECT_TRUE(markup.contains(QStringLiteral("&lt;b&gt;&amp;<span"))) << qPrintable(markup);
    EXPECT_TRUE(markup.contains(QStringLiteral("font-family:'Noto Color Emoji';"
                                               "text-decoration:none\">⚖️</span>")))
        << qPrintable(markup);
}

TEST(MarkedText, KnowsBoldAndCodeAndNothingElse) {
    const MarkedText marked;
    const QString markup = marked.inlineMarkup(QStringLiteral("**a** `b` *c* <i>\n2 * 3"),
                                               QStringLiteral("DejaVu Sans Mono"));
    EXPECT_TRUE(markup.contains(QStringLiteral("<b>a</b> "))) << qPrintable(markup);
    EXPECT_TRUE(markup.contains(QStringLiteral("'DejaVu Sans Mono'\">b</span> *c* &lt;i&gt;<br>")))
        << qPrintable(markup);
}

TEST(MarkedText, CutsNoCharacterInTwo) {
    const MarkedText marked;
    const QFont font(QStringLiteral("DejaVu Sans"), 10);
    const QString family = QStringLiteral("👩‍👩‍👧 and so on");
    for (qreal width = 10; width < 120; width += 3) {
        const QString cut = marked.elided(family, font, width);
        EXPECT_TRUE(cut == QChar(0x2026) || cut.startsWith(QStringLiteral("👩‍👩‍👧")));
    }
    EXPECT_EQ(marked.elided(family, font, 500), family);
}

} // namespace
} // namespace varnhold::testing
