#pragma once

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWidget>
#include <QQuickWindow>
#include <QTest>
#include <gtest/gtest.h>

#include "announced.h"
#include "pointer.h"
#include "views/settings/settings_page.h"

namespace varnhold::testing {

// A piece of QML shown in a window of its own. The text is what would stand in a file below the
// imports.
struct ShownItem {
    QQuickWidget widget;

    explicit ShownItem(const QByteArray& body, const QSize& size = {480, 360}) {
        prepareEngine(*widget.engine());
        auto* component = new QQmlComponent(widget.engine(), &widget);
        const QUrl url(QStringLiteral("qrc:/qt/qml/Varnhold/Shown.qml"));
        component->setData("import QtQuick\nimport Varnhold\n" + body, url);
        QObject* root = component->create();
        EXPECT_NE(root, nullptr) << qPrintable(component->errorString());
        widget.setResizeMode(QQuickWidget::SizeRootObjectToView);
        widget.resize(size);
        widget.setContent(url, component, root);
        widget.show();
        widget.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&widget));
        widget.setFocus();
    }

    [[nodiscard]] QQuickItem* root() const { return widget.rootObject(); }
    [[nodiscard]] QQuickItem* focused() const { return widget.quickWindow()->activeFocusItem(); }

    // What the piece has noted in a property of that name.
    [[nodiscard]] QStringList heard() const { return root()->property("heard").toStringList(); }

    // The first item, from the back, that is announced under this name, pop-ups included.
    [[nodiscard]] QQuickItem* named(const QString& name) const {
        return announced(widget.quickWindow()->contentItem(), name);
    }

    void click(const QString& name, Qt::MouseButton button = Qt::LeftButton) {
        const QQuickItem* item = named(name);
        ASSERT_NE(item, nullptr) << qPrintable(name);
        QTest::mouseMove(&widget, middleOf(item));
        if (button == Qt::LeftButton) {
            QTest::mouseClick(&widget, button, {}, middleOf(item));
        } else {
            clickOnScreen(&widget, button, middleOf(item));
        }
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&widget, key, modifiers);
    }

    void type(const QString& text) { QTest::keyClicks(&widget, text); }
};

} // namespace varnhold::testing
