#pragma once

#include <QAccessible>
#include <QMainWindow>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include "unit/settings/settings_home.h"
#include "views/settings/settings_model.h"
#include "views/settings/settings_page.h"

namespace varnhold::testing {

// The settings window's page on a record of its own, with a data folder and surroundings that do
// nothing by themselves. Fill the record before show().
struct ShownSettings : SettingsHome {
    ShownSettings() { open(); }

    std::unique_ptr<SettingsModel> model;
    SettingsPage* page = nullptr;
    QMainWindow window;

    void show(const QSize& size = {1200, 850}) {
        model = std::make_unique<SettingsModel>(
            SettingsContext{*view, FleetContext{platform.interfaces, constants}});
        page = new SettingsPage(*model, &window);
        window.setCentralWidget(page);
        window.resize(size);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        page->setFocus();
    }

    ~ShownSettings() { delete window.takeCentralWidget(); }
    ShownSettings(const ShownSettings&) = delete;
    ShownSettings& operator=(const ShownSettings&) = delete;

    // The first item, from the front, that is announced under this name; null if there is none.
    [[nodiscard]] QQuickItem* named(const QString& name) const {
        return named(page->rootObject(), name);
    }

    [[nodiscard]] static QQuickItem* named(QQuickItem* under, const QString& name) {
        if (!under->isVisible()) {
            return nullptr;
        }
        if (const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(under);
            spoken != nullptr && spoken->text(QAccessible::Name) == name) {
            return under;
        }
        for (QQuickItem* child : under->childItems()) {
            if (QQuickItem* found = named(child, name)) {
                return found;
            }
        }
        return nullptr;
    }

    // Where the item's middle is on the page.
    [[nodiscard]] static QPoint middle(const QQuickItem* item) {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }

    void click(const QQuickItem* item, Qt::MouseButton button = Qt::LeftButton) const {
        QTest::mouseClick(page, button, {}, middle(item));
    }

    void click(const QString& name) const {
        const QQuickItem* item = named(name);
        ASSERT_NE(item, nullptr) << qPrintable(name);
        click(item);
    }

    // Types into whatever has the focus.
    void type(const QString& text) const { QTest::keyClicks(page, text); }
};

} // namespace varnhold::testing
