#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include "views/status/desktop_notice.h"
#include "views/status/exported_row.h"
#include "views/text/emoji_text.h"
#include "views/text/qt_text.h"

namespace varnhold::testing {
namespace {

// What a panel shows of an exported label: "__" is a sign, a single "_" marks the letter behind it.
QString asThePanelShowsIt(const QString& label) {
    QString shown;
    for (qsizetype i = 0; i < label.size(); ++i) {
        if (label[i] == QLatin1Char('_')) {
            ++i; // and what follows it is shown, a sign or a marked letter
        }
        if (i < label.size()) {
            shown += label[i];
        }
    }
    return shown;
}

TEST(MenuText, KeepsAmpersandsAndShowsTabsAsSpace) {
    EXPECT_EQ(menuText("Health & Wealth && more"), QStringLiteral("Health && Wealth &&&& more"));
    EXPECT_EQ(menuText("a\tb"), QStringLiteral("a\u2003b"));
    EXPECT_EQ(menuText("a_b"), QStringLiteral("a_b"));
}

TEST(ExportedText, ComesOutAsTypedWhereAPanelShowsIt) {
    for (const char* typed : {"plain", "a_b", "__init__", "A & B", "A & B & C", "&", "A&", "&A",
                              "_&_", "x && y", "Q&A_1 & Q&A_2", ""}) {
        EXPECT_EQ(asThePanelShowsIt(exportedText(QString::fromUtf8(typed))),
                  QString::fromUtf8(typed))
            << typed;
    }
}

QFont testFont() {
    return QFont(QStringLiteral("DejaVu Sans"), 10);
}

TEST(EmojiText, OfEveryScriptHasItsWidth) {
    for (const char* text : {"plain", "مساعد المكتب", "עוזר המשרד", "🔬 مساعد", "规划者"}) {
        const QString shown = QString::fromUtf8(text);
        EXPECT_GT(emojiTextWidth(testFont(), shown), 20) << text;
        EXPECT_GT(emojiTextWidth(testFont(), shown + QLatin1Char(' ')),
                  emojiTextWidth(testFont(), shown))
            << text;
    }
}

TEST(EmojiText, IsAsWideInPiecesAsItIsInOne) {
    for (const char* text : {"🔬 Researcher", "🟢 🧭 Planner (Idle) ", "🌈🌈", "a⚖️b 🔬",
                             "🔬 مساعد 🟢"}) {
        const QString shown = QString::fromUtf8(text);
        QTextLayout whole(shown, testFont());
        QTextOption option;
        option.setFlags(QTextOption::IncludeTrailingSpaces);
        whole.setTextOption(option);
        whole.setFormats(emojiFormats(shown));
        whole.beginLayout();
        const QTextLine line = whole.createLine();
        whole.endLayout();
        for (int again = 0; again < 2; ++again) {
            EXPECT_NEAR(emojiTextWidth(testFont(), shown), line.naturalTextWidth(), 1) << text;
        }
        QFont larger = testFont();
        larger.setPointSize(30);
        EXPECT_GT(emojiTextWidth(larger, shown), 2 * line.naturalTextWidth()) << text;
    }
}

TEST(EmojiText, OfEveryScriptIsCutToTheWidth) {
    for (const char* word : {"plain ", "مساعد ", "עוזר ", "规划者"}) {
        const QString shown = QString::fromUtf8(word).repeated(40);
        const QString cut = elidedEmojiText(testFont(), shown, 100);
        EXPECT_LT(cut.size(), shown.size()) << word;
        EXPECT_TRUE(cut.endsWith(QChar(0x2026)));
        EXPECT_LE(emojiTextWidth(testFont(), cut), 100) << word;
        EXPECT_GT(emojiTextWidth(testFont(), cut), 50) << word;
    }
}

TEST(EmojiText, KeepsSignsOfSeveralPartsInOnePiece) {
    for (const char* sign : {"🏳️‍🌈", "👩‍👩‍👧", "🇩🇪", "👍🏽"}) {
        const QString text = QString::fromUtf8(sign);
        const auto formats = emojiFormats(text);
        ASSERT_EQ(formats.size(), 1) << sign;
        EXPECT_EQ(formats.front().length, text.size()) << sign;
    }
}

TEST(EmojiText, JoinsThePartsOfOneSign) {
    const qreal one = emojiTextWidth(testFont(), QStringLiteral("🌈"));
    for (const char* sign : {"🏳️‍🌈", "👩‍👩‍👧", "❤️‍🔥"}) {
        EXPECT_LT(emojiTextWidth(testFont(), QString::fromUtf8(sign)), 1.5 * one) << sign;
    }
    const QString plain = QString::fromUtf8("⚖️ مساعد");
    EXPECT_EQ(withJoinedEmoji(plain), plain);
}

TEST(EmojiText, IsDrawnAtItsPlaceInEveryScript) {
    for (const char* text : {"plain", "مساعد المكتب", "עוזר המשרד"}) {
        QImage picture(300, 40, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        painter.setFont(testFont());
        const QString shown = QString::fromUtf8(text);
        drawEmojiText(painter, {20, 0, 260, 40}, shown);
        painter.end();
        int left = picture.width();
        int right = 0;
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y) {
                if (picture.pixelColor(x, y).lightness() < 128) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                }
            }
        }
        EXPECT_NEAR(left, 20, 4) << text;
        EXPECT_NEAR(right, 20 + emojiTextWidth(testFont(), shown), 4) << text;
    }
}

TEST(NoticeText, SaysEverythingAndMeansNoMarkup) {
    const NoticePanel panel = noticePanel({{"<b>A & B</b> came", true}, {"C came", false}});
    EXPECT_EQ(noticeText(panel, false),
              QString::fromUtf8(
                  "<b>A & B</b> came\n⚠️ This affects a chain you use — re-check it.\n"
                  "C came"));
    EXPECT_TRUE(noticeText(panel, true).startsWith(QStringLiteral("&lt;b&gt;A &amp; B&lt;/b&gt;")));
}

TEST(ToQString, KeepsWhatIsBeyondAscii) {
    EXPECT_EQ(toQString("Wächterin 夜警 🔴"), QString::fromUtf8("Wächterin 夜警 🔴"));
}

} // namespace
} // namespace varnhold::testing
