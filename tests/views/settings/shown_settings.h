#pragma once

#include <QMainWindow>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include "announced.h"
#include "modelled_settings.h"
#include "pointer.h"
#include "views/settings/settings_page.h"

namespace varnhold::testing {

// The settings window's page on a record of its own, with a data folder and surroundings that do
// nothing by themselves. Fill the record before show().
struct ShownSettings : ModelledSettings {
    SettingsPage* page = nullptr;
    QMainWindow window;

    void show(const QSize& size = {1200, 850}) {
        page = new SettingsPage(modelled(), &window);
        window.setCentralWidget(page);
        window.resize(size);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        page->setFocus();
    }

    ShownSettings() = default;
    ~ShownSettings() { delete window.takeCentralWidget(); }
    ShownSettings(const ShownSettings&) = delete;
    ShownSettings& operator=(const ShownSettings&) = delete;

    // The first item, from the front, that is announced under this name; null if there is none.
    [[nodiscard]] QQuickItem* named(const QString& name) const {
        return announced(page->rootObject(), name);
    }

    void click(const QQuickItem* item, Qt::MouseButton button = Qt::LeftButton) const {
        QTest::mouseMove(page, middleOf(item));
        if (button == Qt::LeftButton) {
            QTest::mouseClick(page, button, {}, middleOf(item));
        } else {
            clickOnScreen(page, button, middleOf(item));
        }
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
