#include "shown_chains.h"

#include <QMimeData>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExpression>
#include <QQuickWindow>

#include "pointer.h"
#include "views/settings/dragging/drag_session.h"
#include "views/settings/settings_page.h"

namespace varnhold::testing {

ShownChains::~ShownChains() {
    delete window.takeCentralWidget();
}

void ShownChains::show(const QSize& size) {
    modelled();
    page = new QQuickWidget(&window);
    page->setResizeMode(QQuickWidget::SizeRootObjectToView);
    page->setAcceptDrops(true);
    prepareEngine(*page->engine());
    const QUrl url =
        QUrl::fromLocalFile(QStringLiteral(VIEWS_TESTS "/settings/chains/ChainsBoard.qml"));
    auto* component = new QQmlComponent(page->engine(), url, page);
    QObject* root = component->createWithInitialProperties(
        {{QStringLiteral("settings"), QVariant::fromValue(model.get())}});
    ASSERT_NE(root, nullptr) << qPrintable(component->errorString());
    page->setContent(url, component, root);
    window.setCentralWidget(page);
    window.resize(size);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    page->setFocus();
}

void ShownChains::settle() {
    platform.runMain();
    QTest::qWait(20);
}

QQuickItem* ShownChains::named(const QString& name, const QString& under) const {
    QQuickItem* root = page->quickWindow()->contentItem(); // menus stand beside the page
    if (!under.isEmpty()) {
        root = announced(root, under);
    }
    if (root != nullptr) {
        for (QQuickItem* child : root->childItems()) {
            if (QQuickItem* found = announced(child, name)) {
                return found;
            }
        }
    }
    return nullptr;
}

QQuickItem* ShownChains::focused() const {
    return page->quickWindow()->activeFocusItem();
}

QVariant ShownChains::theme(const char* property) const {
    QQuickItem* root = page->rootObject();
    return QQmlExpression(qmlContext(root), root,
                          QStringLiteral("Theme.") + QString::fromUtf8(property))
        .evaluate();
}

void ShownChains::click(const QString& name, const QString& under, Qt::MouseButton button) {
    const QQuickItem* item = named(name, under);
    ASSERT_NE(item, nullptr) << qPrintable(name);
    if (button == Qt::LeftButton) {
        QTest::mouseMove(page, middleOf(item));
        QTest::mouseClick(page, button, {}, middleOf(item));
    } else {
        clickOnScreen(page, button, middleOf(item));
    }
    settle();
}

void ShownChains::focus(const QString& name, const QString& under) {
    QQuickItem* item = named(name, under);
    ASSERT_NE(item, nullptr) << qPrintable(name);
    item->forceActiveFocus(Qt::TabFocusReason);
}

void ShownChains::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(page, key, modifiers);
    settle();
}

void ShownChains::lift(const QString& name, const QString& under) {
    const QQuickItem* row = named(name, under);
    ASSERT_NE(row, nullptr) << qPrintable(name);
    const QPoint at = middleOf(row);
    QTest::mousePress(page, Qt::LeftButton, {}, at);
    for (int step = 1; step <= 4; ++step) {
        QTest::mouseMove(page, at + QPoint(0, 5 * step));
    }
    QTest::mouseRelease(page, Qt::LeftButton, {}, at + QPoint(0, 20));
    QTest::qWait(20);
}

void ShownChains::drag(const QString& name, const QString& under,
                       const std::function<void(const QDrag& drag)>& script) {
    const int type = qmlTypeId("Varnhold", 1, 0, "DragSession");
    auto* session = page->engine()->singletonInstance<DragSession*>(type);
    ASSERT_NE(session, nullptr);
    bool carried = false;
    session->setCarrier([&](QDrag& drag) {
        carried = true;
        script(drag);
        return Qt::MoveAction;
    });
    const QQuickItem* row = named(name, under);
    ASSERT_NE(row, nullptr) << qPrintable(name);
    const QPoint at = middleOf(row);
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, at);
    for (int step = 1; step <= 4; ++step) {
        QTest::mouseMove(window.windowHandle(), at + QPoint(0, 5 * step));
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return carried && !session->active(); }));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, at);
}

Qt::DropAction ShownChains::carryTo(const QPoint& at, const QString& text) {
    QMimeData data;
    data.setText(text);
    if (!carrying_) {
        QDragEnterEvent enter(at, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(page, &enter);
        carrying_ = true;
    }
    QDragMoveEvent move(at, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(page, &move);
    QTest::qWait(1);
    return move.isAccepted() ? move.dropAction() : Qt::IgnoreAction;
}

void ShownChains::dropAt(const QPoint& at, const QString& text) {
    carryTo(at, text);
    QMimeData data;
    data.setText(text);
    QDropEvent drop(at, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(page, &drop);
    carrying_ = false;
    settle();
}

void ShownChains::drop(const QString& text, const QString& name, const QString& under) {
    const QQuickItem* item = named(name, under);
    ASSERT_NE(item, nullptr) << qPrintable(name);
    dropAt(middleOf(item), text);
}

void ShownChains::leave() {
    QDragLeaveEvent event;
    QCoreApplication::sendEvent(page, &event);
    carrying_ = false;
}

} // namespace varnhold::testing
