#include <QApplication>
#include <QFontDatabase>
#include <optional>
#include <set>
#include <string>

#include "more_fonts.h"
#include "shown_item.h"
#include "shown_sheets.h"

namespace varnhold::testing {
namespace {

struct Words {
    QString text;
    QRectF place; // in the window, what is seen of it
};

class FontFit : public ::testing::TestWithParam<const char*>, public ShownSheets {
protected:
    void SetUp() override {
        family_ = QString::fromLatin1(GetParam());
        if (!QFontDatabase::families().contains(family_)) {
            GTEST_SKIP() << "this machine doesn't have " << GetParam();
        }
        before_ = QApplication::font();
        QApplication::setFont(QFont(family_, 10));
        takeSampleFleet();
        view->showHints = true;
        for (const AIModelItem& each : view->allLibraryModels) {
            data_.insert({toQString(each.name), toQString(each.family)});
        }
        for (const BotConfig& each : view->userBots) {
            data_.insert({toQString(each.role), toQString(each.title),
                          toQString(each.icon + " " + each.title)});
        }
    }
    void TearDown() override {
        if (before_) {
            QApplication::setFont(*before_);
        }
    }

    // Texts that are seen, and among them those that are cut though they are the program's own.
    void collect(const QQuickItem* item, QRectF seen) {
        const QRectF place = item->mapRectToScene({0, 0, item->width(), item->height()});
        if (!item->isVisible() || item->opacity() == 0) {
            return;
        }
        if (item->clip()) {
            seen = seen.intersected(place);
        }
        if (item->inherits("QQuickText") && !item->property("text").toString().isEmpty()) {
            const QString text = item->property("text").toString();
            if (item->property("truncated").toBool() && !data_.contains(text)) {
                cut.append(text);
            }
            const QRectF words = painted(*item).intersected(seen);
            if (!words.isEmpty()) {
                shown.append({text, words});
            }
        }
        for (const QQuickItem* child : item->childItems()) {
            collect(child, seen);
        }
    }

    // Where the letters are, as the text says how it is aligned.
    static QRectF painted(const QQuickItem& text) {
        const QSizeF size(text.property("contentWidth").toReal(),
                          text.property("contentHeight").toReal());
        const auto across = Qt::Alignment(text.property("effectiveHorizontalAlignment").toInt());
        const auto down = Qt::Alignment(text.property("verticalAlignment").toInt());
        const qreal x = across & Qt::AlignHCenter ? (text.width() - size.width()) / 2
                        : across & Qt::AlignRight ? text.width() - size.width()
                                                  : 0;
        const qreal y = down & Qt::AlignVCenter  ? (text.height() - size.height()) / 2
                        : down & Qt::AlignBottom ? text.height() - size.height()
                                                 : 0;
        return text.mapRectToScene(QRectF(QPointF(x, y), size));
    }

    MoreFonts fonts;
    QString family_;
    QList<Words> shown;
    QStringList cut;

private:
    std::optional<QFont> before_;
    std::set<QString> data_;
};

TEST_P(FontFit, CutsNoWordsOfTheProgramAndLaysNoneOverOthers) {
    constexpr qreal lineSpace = 4; // that lines above each other may share
    show();
    for (const QSize& size : {QSize(1200, 850), QSize(1200, 2400)}) {
        window.resize(size);
        platform.settle();
        QCoreApplication::processEvents();
        static_cast<void>(page->grabFramebuffer());
        shown.clear();
        cut.clear();
        collect(page->rootObject(), page->rect());
        EXPECT_GT(shown.size(), 60);
        // It takes the room that is left beside a bot's name.
        cut.removeAll(
            QStringLiteral("· Additional instructions specific to the selected bot's role"));
        EXPECT_TRUE(cut.isEmpty()) << cut.join(QStringLiteral(" | ")).toStdString();
        for (qsizetype one = 0; one < shown.size(); ++one) {
            for (qsizetype other = one + 1; other < shown.size(); ++other) {
                const QRectF both = shown[one].place.intersected(shown[other].place);
                EXPECT_TRUE(both.width() <= 1 || both.height() <= lineSpace)
                    << shown[one].text.toStdString() << " over " << shown[other].text.toStdString();
            }
        }
    }
}

// Fonts of other scripts have taller lines, which must not push the letters down.
TEST(ForeignNames, StandOnTheLineOfTheLettersBesideThem) {
    const MoreFonts fonts;
    const QStringList families = QFontDatabase::families();
    if (!families.contains(QStringLiteral("Noto Sans CJK SC")) &&
        !families.contains(QStringLiteral("Droid Sans Fallback"))) {
        GTEST_SKIP() << "this machine has no signs for them";
    }
    ShownItem shown(R"(Rectangle {
        color: "white"
        EmojiLabel { id: name; x: 10; y: 40; text: "Ag" }
        EmojiLabel { x: 110; anchors.baseline: name.baseline; text: "Ag\u6f22\u5b57" }
        Label { x: 210; anchors.baseline: name.baseline; text: "Ag" }
        Label { x: 310; anchors.baseline: name.baseline; text: "Ag\u6f22\u5b57" }
        Chip { x: 10; y: 130; text: "Ag" }
        Chip { x: 210; y: 130; text: "Ag\u6f22\u5b57" }
    })");
    const QImage seen = shown.widget.grabFramebuffer();
    const auto letters = [&](int x, int y) { return seen.copy(x, y, 15, 80); };
    EXPECT_EQ(letters(10, 20), letters(110, 20)) << "names";
    EXPECT_EQ(letters(210, 20), letters(310, 20)) << "labels on a baseline";
    EXPECT_EQ(seen.copy(10, 120, 34, 40), seen.copy(210, 120, 34, 40)) << "names of files";
    EXPECT_NE(seen.copy(325, 20, 30, 80), seen.copy(25, 20, 30, 80)) << "there are signs at all";
}

INSTANTIATE_TEST_SUITE_P(Families, FontFit,
                         ::testing::Values("DejaVu Sans", "Noto Sans", "Cantarell", "Inter",
                                           "Noto Sans CJK SC", "Droid Sans Fallback"),
                         [](const auto& which) {
                             std::string name(which.param);
                             std::erase(name, ' ');
                             return name;
                         });

} // namespace
} // namespace varnhold::testing
