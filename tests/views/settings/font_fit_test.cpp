#include <QApplication>
#include <QDirIterator>
#include <QFontDatabase>
#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include "shown_sheets.h"

namespace varnhold::testing {
namespace {

// Fonts that desktops come with, where Debian's packages put them. Those that this machine hasn't
// are passed over; VARNHOLD_FONTS names another folder to look in.
void loadFonts() {
    QStringList folders{QStringLiteral("/usr/share/fonts/truetype/noto"),
                        QStringLiteral("/usr/share/fonts/opentype/cantarell"),
                        QStringLiteral("/usr/share/fonts/opentype/inter")};
    if (const QString more = qEnvironmentVariable("VARNHOLD_FONTS"); !more.isEmpty()) {
        folders.append(more);
    }
    for (const QString& folder : folders) {
        for (QDirIterator files(folder,
                                {QStringLiteral("NotoSans-*.ttf"),
                                 QStringLiteral("NotoSansCJK*.ttc"),
                                 QStringLiteral("Cantarell-*.otf"), QStringLiteral("Inter-*.otf")},
                                QDir::Files, QDirIterator::Subdirectories);
             files.hasNext();) {
            QFontDatabase::addApplicationFont(files.next());
        }
    }
}

struct Words {
    QString text;
    QRectF place; // in the window, what is seen of it
};

class FontFit : public ::testing::TestWithParam<const char*>, public ShownSheets {
protected:
    void SetUp() override {
        loadFonts();
        family_ = QString::fromLatin1(GetParam());
        if (!QFontDatabase::families().contains(family_)) {
            GTEST_SKIP() << "this machine doesn't have " << GetParam();
        }
        before_ = QApplication::font();
        QApplication::setFont(QFont(family_, 10));
        std::filesystem::copy(VIEWS_TESTS "/../../examples/fleet", constants.appSupportDir,
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::overwrite_existing);
        open();
        view->loadSettings();
        view->refresh();
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

INSTANTIATE_TEST_SUITE_P(Families, FontFit,
                         ::testing::Values("DejaVu Sans", "Noto Sans", "Cantarell", "Inter",
                                           "Noto Sans CJK SC"),
                         [](const auto& which) {
                             std::string name(which.param);
                             std::erase(name, ' ');
                             return name;
                         });

} // namespace
} // namespace varnhold::testing
