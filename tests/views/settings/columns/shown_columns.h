#pragma once

#include <QMimeData>
#include <algorithm>
#include <functional>

#include "announced.h"
#include "shown_settings.h"

namespace varnhold::testing {

// The window, with what its left pane and its top block need of their surroundings.
struct ShownColumns : ShownSettings {
    ShownColumns() { answerForAgents(); }

    void show(int paneWidth = 280) {
        ShownSettings::show();
        auto* pane = page->rootObject()->findChild<QQuickItem*>(QStringLiteral("leftPane"));
        ASSERT_NE(pane, nullptr);
        pane->parentItem()->setProperty("leftWidth", paneWidth);
        settle();
    }

    // Lets what is queued be done, answered and laid out.
    void settle() {
        platform.settle();
        QCoreApplication::processEvents();
        static_cast<void>(page->grabFramebuffer());
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(page, key, modifiers);
    }

    [[nodiscard]] QQuickItem* focused() const { return page->quickWindow()->activeFocusItem(); }

    // Of those announced under the name, the first in that role; null if there is none.
    [[nodiscard]] QQuickItem* named(const QString& name, QAccessible::Role role) const {
        return announced(page->quickWindow()->contentItem(), name, role);
    }
    using ShownSettings::named;

    void clickRow(const QString& name, Qt::MouseButton button = Qt::LeftButton) const {
        QQuickItem* row = named(name, QAccessible::ListItem);
        ASSERT_NE(row, nullptr) << qPrintable(name);
        click(row, button);
    }

    // A menu's row, as the menu comes to stand.
    void chooseFromMenu(const QString& title) {
        settle();
        QQuickItem* row = nullptr;
        ASSERT_TRUE(QTest::qWaitFor([&] {
            row = named(title, QAccessible::MenuItem);
            return row != nullptr && row->height() > 0;
        })) << qPrintable(title);
        click(row);
        settle();
    }

    // Text of another program, dragged over the item and let go there.
    void dropText(const QString& text, const QQuickItem* target) {
        QMimeData dragged;
        dragged.setText(text);
        const QPoint at = middleOf(target);
        QDragEnterEvent entered(at, Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QCoreApplication::sendEvent(page, &entered);
        QDragMoveEvent moved(at, Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QCoreApplication::sendEvent(page, &moved);
        whileHovering();
        QDropEvent dropped(at, Qt::CopyAction, &dragged, Qt::LeftButton, {});
        QCoreApplication::sendEvent(page, &dropped);
    }
    std::function<void()> whileHovering = [] {};

    // A press and a move far enough to be a drag.
    void beginDrag(const QQuickItem* item) {
        const QPoint from = middleOf(item) - QPoint(40, 0);
        QTest::mousePress(page, Qt::LeftButton, {}, from);
        for (const int by : {4, 8, 12}) {
            const QPoint at = from + QPoint(by, by);
            QMouseEvent moved(QEvent::MouseMove, at, page->mapToGlobal(at), Qt::NoButton,
                              Qt::LeftButton, {});
            QCoreApplication::sendEvent(page, &moved);
        }
    }
};

} // namespace varnhold::testing
