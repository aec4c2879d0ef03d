#pragma once

#include <QTest>
#include <QWidget>

namespace varnhold::testing {

// A click by way of the window, as a display sends it. What is sent to the widget itself was never
// pressed as far as the toolkit knows, so it may count as a press that is held.
inline void clickOnScreen(QWidget* page, Qt::MouseButton button, const QPoint& at) {
    QWidget* top = page->window();
    QTest::mouseClick(top->windowHandle(), button, {}, page->mapTo(top, at));
}

} // namespace varnhold::testing
