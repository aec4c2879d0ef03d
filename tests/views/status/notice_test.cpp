#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <QAccessible>
#include <QApplication>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include "unit/settings/settings_home.h"
#include "views/colors/colors.h"
#include "views/desktop/application_icon.h"
#include "views/qt_presentation.h"
#include "views/status/model_notice_view.h"
#include "views/status/text_block.h"
#include "waiting.h"

namespace varnhold::testing {
namespace {

const QRect anchor(600, 8, 85, 28);

QPointer<ModelNoticeView> shownNotices(const std::vector<ModelNotice>& notices) {
    QPointer<ModelNoticeView> view =
        new ModelNoticeView(noticePanel(notices), defaultApplicationIcon().pixmap(64));
    view->showUnder(anchor);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(view));
    return view;
}

TEST(NoticePopover, HasTheSizeOfItsNotices) {
    const auto one = shownNotices({{"m", false}});
    EXPECT_EQ(one->size(), QSize(320, 110));
    one->close();
    const auto two = shownNotices({{"m", false}, {"n", true}});
    EXPECT_EQ(two->size(), QSize(320, 156));
    two->close();
}

TEST(NoticePopover, GrowsRatherThanCutALongMessage) {
    QString text;
    for (int word = 0; word < 80; ++word) {
        text += QStringLiteral("word%1 ").arg(word);
    }
    const auto view = shownNotices({{text.toStdString(), true}});
    EXPECT_GT(view->height(), 200);
    for (const TextBlock* block : view->findChildren<TextBlock*>()) {
        EXPECT_GE(block->height(), block->heightForWidth(block->width()));
        EXPECT_TRUE(
            view->rect().contains(QRect(block->mapTo(view.data(), QPoint()), block->size())));
    }
    view->close();
}

std::vector<ModelNotice> manyNotices() {
    std::vector<ModelNotice> notices;
    for (int i = 0; i < 40; ++i) {
        notices.push_back({"A model of the number " + std::to_string(i) + " was installed", true});
    }
    return notices;
}

// The screen of these tests is 800 points wide and as high.
TEST(NoticePopover, OfManyNoticesScrollsWithinTheScreenAndLeavesItsAnchorFree) {
    const auto view = shownNotices(manyNotices());
    EXPECT_TRUE(QGuiApplication::primaryScreen()->availableGeometry().contains(view->geometry()));
    EXPECT_FALSE(view->geometry().intersects(anchor));
    const auto* area = view->findChild<QScrollArea*>();
    ASSERT_NE(area, nullptr);
    EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
    const TextBlock* last = nullptr;
    for (const TextBlock* block : view->findChildren<TextBlock*>()) {
        if (block->accessibleName().contains(QStringLiteral("number 39"))) {
            last = block;
        }
    }
    ASSERT_NE(last, nullptr);
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
    const QRect place(last->mapTo(view.data(), QPoint()), last->size());
    EXPECT_TRUE(view->rect().contains(place)) << place.y() << " of " << view->height();
    EXPECT_GE(last->height(), last->heightForWidth(last->width()));
    view->close();
}

TEST(NoticePopover, OfManyNoticesGoesWhereThereIsMoreRoom) {
    const QRect low(300, 700, 85, 28);
    const QPointer<ModelNoticeView> view =
        new ModelNoticeView(noticePanel(manyNotices()), defaultApplicationIcon().pixmap(64));
    view->showUnder(low);
    EXPECT_LT(view->geometry().bottom(), low.top());
    EXPECT_TRUE(QGuiApplication::primaryScreen()->availableGeometry().contains(view->geometry()));
    view->close();
}

TEST(NoticePopover, OfMoreNoticesThanItNamesCountsTheRestAtItsEnd) {
    const auto view = shownNotices(std::vector<ModelNotice>(100'000, {"m", false}));
    const auto blocks = view->findChildren<TextBlock*>();
    ASSERT_EQ(blocks.size(), 1 + 100 + 1);
    EXPECT_EQ(blocks.back()->accessibleName(), QStringLiteral("… and 99900 more"));
    view->close();
}

TEST(NoticePopover, ThatFitsScrollsNothing) {
    const auto view = shownNotices({{"m", true}, {"n", false}});
    EXPECT_EQ(view->findChild<QScrollArea*>()->verticalScrollBar()->maximum(), 0);
    view->close();
}

TEST(NoticePopover, StandsUnderItsAnchorAndOnTheScreen) {
    const auto view = shownNotices({{"m", false}});
    EXPECT_GT(view->y(), anchor.bottom());
    EXPECT_TRUE(QGuiApplication::primaryScreen()->availableGeometry().contains(view->geometry()));
    view->close();
}

TEST(NoticePopover, ClosesOnEscape) {
    const auto view = shownNotices({{"m", false}});
    QTest::keyClick(view, Qt::Key_Escape);
    WAIT_UNTIL(view == nullptr);
}

TEST(NoticePopover, IsAnAlertToThoseWhoListen) {
    const auto view = shownNotices({{"m", false}});
    QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(view);
    ASSERT_NE(heard, nullptr);
    EXPECT_EQ(heard->role(), QAccessible::AlertMessage);
    EXPECT_EQ(heard->text(QAccessible::Name), QStringLiteral("New AI model installed"));
    view->close();
}

TEST(NoticePopover, KeepsItsWarningReadableWhenTheColoursChange) {
    const auto view = shownNotices({{"m", true}});
    const auto warning = [&] {
        for (const TextBlock* block : view->findChildren<TextBlock*>()) {
            if (block->accessibleName().contains(QStringLiteral("re-check"))) {
                return block->palette().color(QPalette::WindowText);
            }
        }
        return QColor();
    };
    EXPECT_EQ(warning(), warningColor(lightPalette()));
    QApplication::setPalette(darkPalette());
    QCoreApplication::processEvents();
    EXPECT_EQ(warning(), warningColor(darkPalette()));
    QApplication::setPalette(lightPalette());
    view->close();
}

TEST(NoticePopover, OfThePresentationClosesItsViewAndNothingAfterIt) {
    SettingsHome home;
    QtPresentation presentation({home.platform.interfaces, home.constants});
    auto popover = presentation.showNoticePopover(noticePanel({{"m", false}}), "");
    const QPointer<QWidget> view = QApplication::activePopupWidget();
    ASSERT_NE(view, nullptr);
    popover->close();
    WAIT_UNTIL(view == nullptr);
    popover->close(); // the 14 seconds of one that has long gone
}

} // namespace
} // namespace varnhold::testing
